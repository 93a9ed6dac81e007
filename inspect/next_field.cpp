// The fields of a record, one by one.
#include "field.h"

using namespace tlvmsg::inspect;

namespace {

bool is_whole_record(const tlvmsg_member &member) { return *member.path == '\0'; }

bool is_shared(const tlvmsg_member &member) { return (member.flags & TLVMSG_SHARED_WITH_NEXT) != 0; }

// The union that lives in the structure's own record, when it is this member; its selector is the member before.
const tlvmsg_type *union_at(const tlvmsg_type &type, uint32_t member) {
    return member < type.member_count && is_whole_record(type.members[member]) ? type.members[member].type
                                                                               : nullptr;
}

bool next_alternative(const tlvmsg_type &union_type, const void *record, tlvmsg_field &field) {
    const tlvmsg_alternative *const chosen = record != nullptr ? chosen_in(union_type, record) : nullptr;
    while (field.choice < union_type.alternative_count) {
        const tlvmsg_alternative &each = union_type.alternatives[field.choice++];
        if (record == nullptr || &each == chosen) {
            field.name = each.name;
            field.type = each.type;
            field.offset = each.offset;
            field.doc = "";
            field.shared = nullptr;
            field.union_type = &union_type;
            field.alternative = &each;
            return true;
        }
    }
    return false;
}

bool next_of_union(const tlvmsg_type &type, const void *record, tlvmsg_field &field) {
    if (field.member > 0) {
        return next_alternative(type, record, field);
    }
    field = {type.selector_name, type.selector, type.selector_offset, "", nullptr, &type, nullptr, 1, 0};
    return true;
}

bool next_of_members(const tlvmsg_type &type, const void *record, tlvmsg_field &field) {
    const tlvmsg_member *shared = nullptr;
    while (field.member < type.member_count) {
        const tlvmsg_member &member = type.members[field.member];
        if (is_whole_record(member) && next_alternative(*member.type, record, field)) {
            return true;
        }
        ++field.member;
        if (is_shared(member)) {
            shared = &member;
        } else if (!is_whole_record(member)) {
            field = {member.path, member.type,  member.offset,
                     member.doc,  shared,       union_at(type, field.member),
                     nullptr,     field.member, 0};
            return true;
        }
    }
    return false;
}

} // namespace

bool tlvmsg_next_field(const tlvmsg_type *type, const void *record, tlvmsg_field *field) {
    return type->kind == TLVMSG_UNION ? next_of_union(*type, record, *field)
                                      : next_of_members(*type, record, *field);
}
