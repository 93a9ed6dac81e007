#include "place.h"

#include "field.h"
#include "index.h"
#include "text.h"

namespace tlvmsg::inspect {

namespace {

// Links lead to the root, paths from it: as many calls deep as the types nest.
void write_path(const Place &place, Text &text) {
    if (place.parent != nullptr) {
        write_path(*place.parent, text);
    }
    if (place.name == nullptr) {
        text.add("[").add(place.index).add("]");
    } else if (place.name[0] != '\0') { // a union that shares its structure's record has no name in it
        text.add(place.parent != nullptr ? "." : "").add(place.name);
    }
}

} // namespace

Place count_of(const Place &array) { return {&array, &tlvmsg_type_of_uint16, "count", 0, nullptr, nullptr}; }

tlvmsg_fault fault_at(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed) {
    tlvmsg_fault fault{code, offset, found, allowed, {}, {}};
    tlvmsg_place_path(&place, fault.path, sizeof fault.path);
    return fault;
}

tlvmsg_fault fault_in(const char *path, tlvmsg_code code, uint64_t offset, uint64_t found, uint64_t allowed) {
    tlvmsg_fault fault{code, static_cast<size_t>(offset), found, allowed, {}, {}};
    Text(fault.path, sizeof fault.path).add(path);
    return fault;
}

tlvmsg_fault null_argument(const char *argument) { return fault_in(argument, TLVMSG_NULL_ARGUMENT, 0, 0, 0); }

tlvmsg_fault reserved_word(const char *argument, uintptr_t bits) {
    return fault_in(argument, TLVMSG_RESERVED_WORD, 0, bits, 0);
}

} // namespace tlvmsg::inspect

size_t tlvmsg_place_path(const tlvmsg_place *place, char *buffer, size_t size) {
    tlvmsg::inspect::Text text(buffer, size);
    if (place != nullptr) {
        tlvmsg::inspect::write_path(*place, text);
    }
    return text.length();
}

uint16_t tlvmsg_type_tag_read(const tlvmsg_type *type) {
    constexpr uint16_t char_tag = 1;
    constexpr uint16_t uint8_tag = 2;
    return type == nullptr ? 0 : type->tag == char_tag ? uint8_tag : type->tag;
}

bool tlvmsg_type_is_signed(const tlvmsg_type *type) {
    return type != nullptr && tlvmsg::inspect::is_signed(*type);
}
