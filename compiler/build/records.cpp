#include "compiler/build/records.h"

#include <fmt/format.h>

namespace tlvc {

namespace {

using Storage = Field::Storage;

bool shares_record_of_owner(const Member &member) {
    return member.type->kind == Kind::Union && member.type->enclosing != nullptr;
}

std::vector<std::string> path_of(const Type &owner, size_t index) {
    const Member &member = owner.members[index];
    if (shares_record_of_owner(member)) {
        return {};
    }
    const bool own = member.role == Member::Role::Own || shares_record_of_owner(owner.members[index + 1]);
    if (own) {
        return {member.name};
    }
    const Member &next = owner.members[index + 1];
    return {next.name, member.role == Member::Role::CountOfNext ? "count" : next.type->selector_name};
}

std::vector<Field> fields_of_members(const Type &owner) {
    std::vector<Field> fields;
    Doc shared_doc;
    for (const Member &member : owner.members) {
        if (member.lives_in_next()) {
            shared_doc = member.doc;
            continue;
        }
        const bool alternatives = shares_record_of_owner(member);
        fields.push_back({alternatives ? Storage::Alternatives : Storage::Plain,
                          alternatives ? "" : member.name, member.type, member.doc, std::move(shared_doc),
                          member.span});
        shared_doc.clear();
    }
    return fields;
}

std::vector<Field> fields_of(const Type &type) {
    if (is_array(type)) {
        const Storage storage = is_dynamic(type) ? Storage::Pointer : Storage::Array;
        return {{Storage::Plain, "count", type.count, {}, {}, type.span},
                {storage, holds_bytes(type) ? "bytes" : "items", type.element, {}, {}, type.span}};
    }
    if (type.kind == Kind::Union && type.enclosing == nullptr) {
        return {{Storage::Plain, type.selector_name, type.selector, {}, {}, type.span},
                {Storage::Alternatives, "", &type, {}, {}, type.span}};
    }
    return fields_of_members(type);
}

} // namespace

void find_records(Schema &schema) {
    for (Type &type : schema.types) {
        if (!type.sound) {
            continue;
        }
        for (size_t i = 0; i < type.members.size(); ++i) {
            type.members[i].path = path_of(type, i);
        }
        type.fields = fields_of(type);
    }
}

} // namespace tlvc
