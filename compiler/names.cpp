#include "names.h"

namespace tlvc {

namespace {

bool shares_record(const Member &member) {
    return member.type->kind == Kind::Union && member.type->enclosing != nullptr;
}

// Whether the member is stored in the record of the one behind it.
bool lives_in_next(const Type &owner, size_t member) {
    const Member &self = owner.members[member];
    if (self.role == Member::Role::Own) {
        return false;
    }
    return !shares_record(owner.members[member + 1]);
}

} // namespace

std::string record_name(const Type &type) {
    if (type.kind == Kind::Scalar) {
        return type.name == "char" ? "char" : type.name + "_t";
    }
    return type.enclosing != nullptr ? type.enclosing->name : type.name;
}

std::string field_type(const Type &type) {
    const bool number = type.kind == Kind::Scalar || type.kind == Kind::Enumeration;
    return number ? record_name(type) : "struct " + record_name(type);
}

std::string codec_name(const Type &type) { return type.name == "char" ? "character" : type.name; }

std::string size_operation(const Type &type) { return "get_tlv_" + type.name + "_size"; }
std::string encode_operation(const Type &type) { return "encode_tlv_" + type.name; }
std::string decode_operation(const Type &type) { return "decode_tlv_" + type.name; }
std::string descriptor_name(const Type &type) { return "tlvmsg_type_" + type.name; }

unsigned scalar_width(const Type &type) { return static_cast<unsigned>(type.min_size - 4); }

bool is_array(const Type &type) {
    switch (type.kind) {
    case Kind::ElementArray:
    case Kind::PackedArray:
    case Kind::ByteArray:
    case Kind::DynamicElements:
    case Kind::DynamicBytes:
        return true;
    default:
        return false;
    }
}

bool is_dynamic(const Type &type) {
    return type.kind == Kind::DynamicElements || type.kind == Kind::DynamicBytes;
}

bool has_members(const Type &type) { return type.kind == Kind::Structure || type.kind == Kind::Message; }

std::vector<std::string> field_path(const Type &owner, size_t member) {
    const Member &self = owner.members[member];
    if (shares_record(self)) {
        return {};
    }
    if (!lives_in_next(owner, member)) {
        return {self.name};
    }
    const Member &next = owner.members[member + 1];
    return {next.name, is_array(*next.type) ? "count" : next.type->selector_name};
}

std::string joined_path(const Type &owner, size_t member) {
    std::string joined;
    for (const std::string &step : field_path(owner, member)) {
        joined += (joined.empty() ? "" : ".") + step;
    }
    return joined;
}

std::string storage_name(const Type &array) {
    return array.kind == Kind::ByteArray || array.kind == Kind::DynamicBytes ? "bytes" : "items";
}

std::vector<Field> fields(const Type &owner) {
    std::vector<Field> result;
    for (size_t i = 0; i < owner.members.size(); ++i) {
        const Member &member = owner.members[i];
        if (!lives_in_next(owner, i)) {
            result.push_back({shares_record(member) ? "" : member.name, member.type, &member.doc});
        }
    }
    return result;
}

} // namespace tlvc
