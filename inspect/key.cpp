// Messages that receivers know by a number, and where that stands in them.
#include "base/wire.h"
#include "index.h"

#include <cstring>

namespace tlvmsg::inspect {

namespace {

constexpr char number_type[] = "app_sess_msg_type";
constexpr uint32_t header_size{base::header_size};

enum class Search { goes_on, found, failed };

// Moves the place to the number, or behind the type's members. Behind one whose size varies no place is certain.
Search search(const tlvmsg_type &type, tlvmsg_key_place &place) {
    const uint32_t record = place.offset;
    for (uint32_t i = 0; i < type.member_count; ++i) {
        const tlvmsg_type &member = *type.members[i].type;
        const bool selects = i + 1 < type.member_count && type.members[i + 1].type->kind == TLVMSG_UNION;
        const uint32_t begin = place.encoded_offset;
        place.offset = record + type.members[i].offset;
        place.encoded_offset = begin + header_size;
        if (member.kind == TLVMSG_ENUMERATION && std::strcmp(member.name, number_type) == 0) {
            place.encoded_offset += header_size; // of the number's element within that of the enumeration
            return selects ? Search::failed : Search::found;
        }
        if (member.kind == TLVMSG_STRUCTURE) {
            if (const Search result = search(member, place); result != Search::goes_on) {
                return result;
            }
        }
        if (member.min_encoded != member.max_encoded) {
            return Search::failed;
        }
        place.encoded_offset = begin + member.min_encoded;
    }
    return Search::goes_on;
}

bool has_key(const tlvmsg_type &type, const char *family, uint32_t key) {
    return (type.flags & TLVMSG_HAS_KEY) != 0 && type.key == key &&
           (family == nullptr || std::strcmp(type.family, family) == 0);
}

} // namespace

} // namespace tlvmsg::inspect

using namespace tlvmsg::inspect;

const tlvmsg_type *tlvmsg_type_by_key(const char *family, uint32_t key) {
    const tlvmsg_type *found = nullptr;
    for (const tlvmsg_family *each = &tlvmsg_built_in; each != nullptr; each = next(*each)) {
        for (uint32_t i = 0; i < each->type_count; ++i) {
            if (!has_key(*each->types[i], family, key)) {
                continue;
            }
            if (found != nullptr) {
                return nullptr;
            }
            found = each->types[i];
        }
    }
    return found;
}

bool tlvmsg_key_field(const tlvmsg_type *type, tlvmsg_key_place *place) {
    tlvmsg_key_place found{};
    const bool has_field =
        type != nullptr && type->kind == TLVMSG_MESSAGE && search(*type, found) == Search::found;
    if (place != nullptr) {
        *place = has_field ? found : tlvmsg_key_place{};
    }
    return has_field;
}
