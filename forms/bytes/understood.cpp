#include "forms/bytes/understood.h"

#include <tlvmsg/forms/verdict.h>
#include <tlvmsg/inspect.h>

#include <algorithm>
#include <vector>

namespace tlvmsg::forms {

namespace {

struct Sense {
    size_t size; // of the bytes that are there
    size_t end = 0;
    size_t understood = 0;
};

void add(void *context, const tlvmsg_piece *piece) {
    Sense &sense = *static_cast<Sense *>(context);
    const size_t begin = std::max(piece->offset, sense.end); // what two elements claim is counted once
    const size_t end = std::min(piece->offset + piece->size, sense.size);
    if (piece->kind != TLVMSG_PIECE_SKIPPED && begin < end) {
        sense.understood += end - begin;
        sense.end = end;
    }
}

bool begins(const tlvmsg_type *type, Bytes bytes) {
    return bytes.size() >= tag_size && number_at(bytes, 0) == tlvmsg_type_tag_read(type);
}

// Takes one element from the bytes. One that is cut is read as if zeros followed.
size_t understood_element(const tlvmsg_type *type, Bytes &bytes) {
    const size_t size = size_by_header(type, bytes);
    Bytes own = bytes.first(std::min(size, bytes.size()));
    bytes = bytes.subspan(own.size());
    Sense sense{own.size()};
    std::vector<uint8_t> filled;
    if (own.size() < size) {
        filled.assign(own.begin(), own.end());
        filled.resize(size);
        own = filled;
    }
    tlvmsg_trace(type, own.data(), own.size(), nullptr, add, &sense, nullptr, nullptr);
    return std::max(sense.understood, tag_size);
}

} // namespace

// For numbers and enumerations decoders do not go by the length.
size_t size_by_header(const tlvmsg_type *type, Bytes bytes) {
    if (type->kind == TLVMSG_SCALAR || type->kind == TLVMSG_ENUMERATION) {
        return type->min_encoded;
    }
    return header_size + (bytes.size() < header_size ? 0 : number_at(bytes, tag_size));
}

bool fits_strictly(const tlvmsg_type *type, Bytes bytes) {
    constexpr tlvmsg_limits strict{0, true, {}};
    return tlvmsg_judge(type, bytes.data(), bytes.size(), &strict, nullptr) == TLVMSG_FITS;
}

size_t understood(const tlvmsg_type *type, Bytes bytes) {
    if (type->kind != TLVMSG_MESSAGE) {
        return begins(type, bytes) ? understood_element(type, bytes) : 0;
    }
    size_t sum = 0;
    for (uint32_t i = 0; i < type->member_count && begins(type->members[i].type, bytes); ++i) {
        sum += understood_element(type->members[i].type, bytes);
    }
    return sum;
}

} // namespace tlvmsg::forms
