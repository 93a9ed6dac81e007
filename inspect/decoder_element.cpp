// Decoding elements and numbers, and what becomes of those that are not as they should be.
#include "decoder.h"
#include "field.h"

namespace tlvmsg::inspect {

// Reads the header of an element that must have this tag. It does not move `at`: only the caller knows what else
// must hold.
Outcome Decoder::header(const Place &place, size_t at, uint16_t tag, uint16_t &length) {
    if (need(place, at, header_size) == Outcome::Refused) {
        return Outcome::Refused;
    }
    const auto there = static_cast<uint16_t>(load(at, 2));
    length = static_cast<uint16_t>(load(at + 2, 2));
    return there == tag ? Outcome::Done : absent(place, TLVMSG_WRONG_TAG, at, there, tag);
}

// Decodes a scalar's element into number_.
Outcome Decoder::number(const Place &place, size_t &at, uint16_t tag, size_t width, tlvmsg_piece_kind kind) {
    uint16_t length;
    if (const Outcome outcome = header(place, at, tag, length); outcome != Outcome::Done) {
        return outcome;
    }
    if (length != width) {
        return absent(place, TLVMSG_WRONG_LENGTH, at + 2, length, width);
    }
    if (need(place, at, header_size + width) == Outcome::Refused) {
        return Outcome::Refused;
    }
    number_ = load(at + header_size, width);
    report(TLVMSG_PIECE_HEADER, place, at, header_size, uint64_t{tag} << 16 | length);
    report(kind, place, at + header_size, width, number_);
    at += header_size + width;
    return Outcome::Done;
}

// Enters the element of a structure or array, which must lie in the input as a whole.
Outcome Decoder::open(const Place &place, size_t &at, uint16_t tag, Element &element) {
    uint16_t length;
    if (const Outcome outcome = header(place, at, tag, length); outcome != Outcome::Done) {
        return outcome;
    }
    if (need(place, at, header_size + length) == Outcome::Refused) {
        return Outcome::Refused;
    }
    report(TLVMSG_PIECE_HEADER, place, at, header_size, uint64_t{tag} << 16 | length);
    element = {at, at + header_size + length};
    at += header_size;
    return Outcome::Done;
}

// Leaves an element for where its own length says, whatever became of what is inside.
Outcome Decoder::close(const Place &place, size_t &at, const Element &element, Outcome inside) {
    if (inside == Outcome::Absent) {
        inside = tolerate(place);
    } else if (inside == Outcome::Done && at != element.end) {
        const size_t value = element.start + header_size;
        inside = deviate(place, TLVMSG_LENGTH_MISMATCH, element.start + 2, element.end - value, at - value);
    }
    if (inside == Outcome::Done) {
        skip(place, at, element.end);
    }
    return inside;
}

Outcome Decoder::need(const Place &place, size_t at, size_t size) {
    const size_t left = input_.size - at;
    if (size > left) {
        return refuse(place, TLVMSG_TRUNCATED, at, left, size);
    }
    examine(at + size);
    return Outcome::Done;
}

// The atomic loads keep the compiler from fetching a byte again later, when it may have changed.
uint64_t Decoder::load(size_t at, size_t width) const {
    uint64_t value = 0;
    for (size_t i = 0; i < width; ++i) {
        value = value << 8 | __atomic_load_n(input_.bytes + at + i, __ATOMIC_RELAXED);
    }
    return value;
}

Outcome Decoder::refuse(const Place &place, tlvmsg_code code, size_t offset, uint64_t found,
                        uint64_t allowed) {
    fault_ = fault_at(place, code, offset, found, allowed);
    return Outcome::Refused;
}

Outcome Decoder::absent(const Place &place, tlvmsg_code code, size_t offset, uint64_t found,
                        uint64_t allowed) {
    fault_ = fault_at(place, code, offset, found, allowed);
    return Outcome::Absent;
}

Outcome Decoder::deviate(const Place &place, tlvmsg_code code, size_t offset, uint64_t found,
                         uint64_t allowed) {
    fault_ = fault_at(place, code, offset, found, allowed);
    return tolerate(place);
}

// Goes on after the deviation that fault_ describes, unless the caller is strict.
Outcome Decoder::tolerate(const Place &place) {
    if (input_.limits.strict) {
        return Outcome::Refused;
    }
    if (extent_.deviations++ == 0) {
        first_deviation_ = fault_;
    }
    if (tracer_.call != nullptr) {
        const tlvmsg_piece piece{TLVMSG_PIECE_DEVIATION, fault_.offset, 0, &place, 0, &fault_};
        tracer_.call(tracer_.context, &piece);
    }
    return Outcome::Done;
}

void Decoder::report(tlvmsg_piece_kind kind, const Place &place, size_t offset, size_t size,
                     uint64_t value) const {
    if (tracer_.call != nullptr && size > 0) {
        const bool is_value = kind == TLVMSG_PIECE_VALUE; // which may be signed
        const uint64_t number = is_value ? tlvmsg_sign_extend(place.type, value) : value;
        const tlvmsg_piece piece{kind, offset, size, &place, number, nullptr};
        tracer_.call(tracer_.context, &piece);
    }
}

// Moves to the end of an element: forward or, when its members needed more bytes than it has, back.
void Decoder::skip(const Place &place, size_t &at, size_t end) const {
    if (at < end) {
        report(TLVMSG_PIECE_SKIPPED, place, at, end - at, 0);
    }
    at = end;
}

} // namespace tlvmsg::inspect
