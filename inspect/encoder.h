// Encoding by descriptors, into an output or, to learn the size or the fault, into none.
#pragma once

#include "base/wire.h"
#include "field.h"
#include "place.h"

namespace tlvmsg::inspect {

using namespace base; // numbers of the wire

class Encoder {
public:
    // The output may be null: then nothing is written, and the capacity limits the size all the same.
    // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.UninitializedObject): a fault is large and mostly unused
    Encoder(uint8_t *out, size_t capacity) : out_(out), capacity_(capacity) {}

    bool encode(const Place &place, const void *record);

    size_t written() const { return at_; }
    const tlvmsg_fault &fault() const { return fault_; } // defined after failure

private:
    bool members(const Place &place, const void *record);
    bool alternative(const Place &place, const void *record);
    bool array(const Place &place, const void *record);
    bool items(const Place &place, const Items &there);
    bool bytes(const Place &place, const Items &there, bool terminated);
    bool packed(const Place &place, const Items &there);
    bool elements(const Place &place, const Items &there);

    bool number(const Place &place, uint16_t tag, size_t width, uint64_t value);
    bool open(const Place &place, uint16_t tag);
    bool close(const Place &place, size_t start);
    bool reserve(const Place &place, size_t size);
    void put(uint64_t value, size_t width);
    void store(size_t at, uint64_t value, size_t width);
    bool refuse(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed);

    uint8_t *out_;
    size_t capacity_;
    size_t at_ = 0;
    tlvmsg_fault fault_; // not cleared: it is large, and without a failure nobody looks at it
};

} // namespace tlvmsg::inspect
