// A record of any type, with the blocks of its dynamic arrays.
#pragma once

#include <tlvmsg/inspect.h>

#include <memory>
#include <span>

namespace tlvmsg::tool {

class Record {
public:
    // All zero.
    explicit Record(const tlvmsg_type *type);
    ~Record();
    Record(Record &&) = default;
    Record &operator=(Record &&) = delete;

    void *data() { return bytes_.get(); }
    const void *data() const { return bytes_.get(); }
    const tlvmsg_type *type() const { return type_; }

private:
    const tlvmsg_type *type_;
    std::unique_ptr<uint8_t[]> bytes_;
};

// Decodes a message into a record of zero bytes, and says how much of it was taken and what was tolerated.
bool decode(Record &record, std::span<const uint8_t> bytes, tlvmsg_extent &extent, tlvmsg_fault &fault);

} // namespace tlvmsg::tool
