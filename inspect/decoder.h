// Decoding by descriptors: the one engine behind verifying, decoding and tracing.
//
// It takes the input apart as the exact decoders do, tolerance included, but knows where the input ends and
// what the record can hold. Whether it also stores what it finds, or reports it, makes no difference to what
// it accepts.
//
// Each field of the record is decoded at most once, also when no record is filled. So the work is bounded by
// the record and by what may be allocated, however the lengths in the input overlap.
#pragma once

#include "base/wire.h"
#include "place.h"

namespace tlvmsg::inspect {

using namespace base; // numbers of the wire

enum class Outcome {
    Done,
    Absent, // something else stands there, the fault says what; to exact decoders the position becomes null
    Refused // the fault says why
};

class Decoder {
public:
    struct Input {
        const uint8_t *bytes;
        size_t size;
        tlvmsg_limits limits;               // taken literally: zero does not stand for a default
        size_t available_blocks = SIZE_MAX; // there is memory for so many, as far as is known
    };

    struct Tracer {
        tlvmsg_tracer call; // null to report nothing
        void *context;
    };

    Decoder(const Input &input, Tracer tracer) : input_(input), tracer_(tracer) {}

    // Fills a record of zero bytes, unless it is null. On failure the record holds what was decoded before the fault.
    bool decode(const tlvmsg_type &type, uint8_t *record);

    // Defined after success.
    size_t consumed() const { return extent_.consumed; }
    tlvmsg_extent extent() const;

    const tlvmsg_fault &fault() const { return fault_; } // defined after failure

private:
    // Where the element of a structure or array lies, by its header.
    struct Element {
        size_t start;
        size_t end; // inside the input
    };

    // The number in the member before, which may be this one's count or selector.
    struct Before {
        bool present = false;
        uint64_t number = 0;
    };

    // Every step moves `at` behind what it decoded, or, when that is absent, behind what it understood.
    Outcome any(const Place &place, size_t &at, uint8_t *record, Before before);
    Outcome scalar(const Place &place, size_t &at, uint8_t *field);
    Outcome enumeration(const Place &place, size_t &at, uint8_t *field);
    Outcome structure(const Place &place, size_t &at, uint8_t *record);
    Outcome members(const Place &place, size_t &at, uint8_t *record);
    Outcome alternative(const Place &place, size_t &at, uint8_t *record, uint64_t selector);

    // decoder_array.cpp
    Outcome array(const Place &place, size_t &at, uint8_t *record, Before before);
    Outcome check_count(const Place &place, size_t offset, uint16_t count, Before before);
    Outcome block(const Place &place, size_t offset, uint16_t count, uint8_t *record, uint8_t *&items);
    Outcome items(const Place &place, size_t &at, const Element &element, uint16_t count, uint8_t *first);
    Outcome bytes(const Place &place, size_t &at, const Element &element, uint16_t count, uint8_t *first);
    Outcome terminator(const Place &place, size_t &at, const Element &element);
    Outcome packed(const Place &place, size_t &at, uint16_t count, uint8_t *first);
    Outcome elements(const Place &place, size_t &at, uint16_t count, uint8_t *first);

    // decoder_element.cpp
    Outcome header(const Place &place, size_t at, uint16_t tag, uint16_t &length);
    Outcome number(const Place &place, size_t &at, uint16_t tag, size_t width, tlvmsg_piece_kind kind);
    Outcome open(const Place &place, size_t &at, uint16_t tag, Element &element);
    Outcome close(const Place &place, size_t &at, const Element &element, Outcome inside);
    void examine(size_t end) { extent_.examined = end > extent_.examined ? end : extent_.examined; }
    Outcome need(const Place &place, size_t at, size_t size);
    uint64_t load(size_t at, size_t width) const;
    Outcome refuse(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed);
    Outcome absent(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed);
    Outcome deviate(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed);
    Outcome tolerate(const Place &place);
    void report(tlvmsg_piece_kind kind, const Place &place, size_t offset, size_t size, uint64_t value) const;
    void skip(const Place &place, size_t &at, size_t end) const;

    Input input_;
    Tracer tracer_;
    uint64_t number_ = 0; // the last that was decoded

    // As in tlvmsg_extent.
    struct {
        size_t consumed;
        size_t examined;
        size_t allocated;
        size_t blocks;
        size_t deviations;
    } extent_{};

    // Not cleared: they are large, and on good input nobody looks at them.
    tlvmsg_fault first_deviation_; // defined when there are deviations
    tlvmsg_fault fault_;           // the last one that was found
};

// A field or item of a record; null when no record is filled.
inline uint8_t *field_at(uint8_t *record, size_t offset) {
    return record == nullptr ? nullptr : record + offset;
}

} // namespace tlvmsg::inspect
