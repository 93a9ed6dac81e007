// Decoding each kind of type but arrays.
#include "decoder.h"

#include "field.h"

namespace tlvmsg::inspect {

namespace {

// Stores what the record shall hold if the member turns out to be missing.
void preset(const tlvmsg_member &member, uint8_t *field) {
    const tlvmsg_type &type = *member.type;
    if (is_bounded(type)) {
        store_number(field, type.count_width, type.capacity);
    } else if ((member.flags & TLVMSG_ZERO_COUNT) != 0) {
        store_number(field, type.count_width, 0);
    }
}

} // namespace

bool Decoder::decode(const tlvmsg_type &type, uint8_t *record) {
    const Place place = whole(type);
    size_t at = 0;
    Outcome outcome = any(place, at, record, {});
    if (outcome == Outcome::Done && input_.limits.strict && at < input_.size) {
        outcome = refuse(place, TLVMSG_TRAILING_BYTES, at, input_.size - at, 0);
    }
    extent_.consumed = at;
    return outcome == Outcome::Done;
}

tlvmsg_extent Decoder::extent() const {
    return {extent_.consumed,
            extent_.examined,
            extent_.allocated,
            extent_.blocks,
            extent_.deviations,
            extent_.deviations > 0 ? first_deviation_ : tlvmsg_fault{},
            {}};
}

Outcome Decoder::any(const Place &place, size_t &at, uint8_t *record, Before before) {
    switch (place.type->kind) {
    case TLVMSG_SCALAR:
        return scalar(place, at, record);
    case TLVMSG_ENUMERATION:
        return enumeration(place, at, record);
    case TLVMSG_STRUCTURE:
        return structure(place, at, record);
    case TLVMSG_MESSAGE:
        return members(place, at, record);
    case TLVMSG_UNION:
        return alternative(place, at, record, before.number);
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
    case TLVMSG_DYNAMIC_BYTES:
        return array(place, at, record, before);
    }
    return Outcome::Done;
}

Outcome Decoder::scalar(const Place &place, size_t &at, uint8_t *field) {
    const tlvmsg_type &type = *place.type;
    const Outcome outcome = number(place, at, tlvmsg_type_tag_read(&type), type.size, TLVMSG_PIECE_VALUE);
    if (outcome == Outcome::Done && field != nullptr) {
        store_number(field, type.size, number_);
    }
    return outcome;
}

// The own length of an enumeration decides nothing, unless it is an alternative that ends by it.
Outcome Decoder::enumeration(const Place &place, size_t &at, uint8_t *field) {
    const bool end_by_length =
        place.alternative != nullptr && (place.alternative->flags & TLVMSG_END_BY_LENGTH) != 0;
    const size_t start = at;
    uint16_t length;
    if (const Outcome outcome = header(place, at, place.type->tag, length); outcome != Outcome::Done) {
        return outcome;
    }
    if (end_by_length && need(place, at, header_size + length) == Outcome::Refused) {
        return Outcome::Refused;
    }
    report(TLVMSG_PIECE_HEADER, place, at, header_size, uint64_t{place.type->tag} << 16 | length);
    at += header_size;

    Outcome outcome = number(place, at, enumerator_tag, enumerator_width, TLVMSG_PIECE_VALUE);
    if (outcome == Outcome::Done && field != nullptr) {
        store_number(field, enumerator_width, number_);
    }
    if (end_by_length) {
        return close(place, at, {start, start + header_size + length}, outcome);
    }
    if (outcome == Outcome::Done && length != enumeration_length) {
        outcome = deviate(place, TLVMSG_LENGTH_MISMATCH, start + 2, length, enumeration_length);
    }
    return outcome;
}

Outcome Decoder::structure(const Place &place, size_t &at, uint8_t *record) {
    Element element;
    if (const Outcome outcome = open(place, at, place.type->tag, element); outcome != Outcome::Done) {
        return outcome;
    }
    return close(place, at, element, members(place, at, record));
}

// Members behind an absent one are absent too. Structures, not messages, still preset them.
Outcome Decoder::members(const Place &place, size_t &at, uint8_t *record) {
    const tlvmsg_type &type = *place.type;
    Outcome outcome = Outcome::Done;
    Before before;
    for (uint32_t i = 0; i < type.member_count; ++i) {
        const tlvmsg_member &member = type.members[i];
        uint8_t *const field = field_at(record, member.offset);
        if (field != nullptr && type.kind == TLVMSG_STRUCTURE) {
            preset(member, field);
        }
        if (outcome == Outcome::Done) {
            outcome = any(inside(place, member), at, field, before);
            before = {true, number_};
        }
        if (outcome == Outcome::Refused) {
            break;
        }
    }
    return outcome;
}

Outcome Decoder::alternative(const Place &place, size_t &at, uint8_t *record, uint64_t selector) {
    const tlvmsg_alternative *const chosen = chosen_by(*place.type, selector);
    if (chosen == nullptr) {
        return Outcome::Done;
    }
    return any(inside(place, *chosen), at, field_at(record, chosen->offset), {});
}

} // namespace tlvmsg::inspect
