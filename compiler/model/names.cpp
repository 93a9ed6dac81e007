#include "compiler/model/names.h"

#include "base/ascii.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc::names {

namespace {

std::string upper(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), tlvmsg::base::upper);
    return name;
}

} // namespace

std::string record(const Type &type) {
    if (type.scalar != nullptr) {
        return std::string(type.scalar->record);
    }
    return type.enclosing != nullptr ? type.enclosing->name : type.name;
}

std::string field_type(const Type &type) { return is_number(type) ? record(type) : "struct " + record(type); }

std::string codec(const Type &type) {
    return type.scalar != nullptr ? std::string(type.scalar->codec) : type.name;
}

// The size operations of scalars, alone, are called get_X_size.
std::string size_operation(const Type &type) {
    return (type.scalar != nullptr ? "get_" : "get_tlv_") + type.name + "_size";
}
std::string encode_operation(const Type &type) { return "encode_tlv_" + type.name; }
std::string decode_operation(const Type &type) { return "decode_tlv_" + type.name; }

std::string constant(Constant what, const Type &type) {
    constexpr std::string_view words[] = {"TAG", "SIZE", "MIN_SIZE", "MAX_SIZE", "CAPACITY"};
    return fmt::format("TLVMSG_{}_{}", words[static_cast<size_t>(what)], type.name);
}

std::string enumerator(const Type &enumeration, const Enumerator &enumerator) {
    return enumeration.name + "_" + enumerator.name;
}

std::string guard(const std::string &header) { return "TLVMSG_" + upper(header) + "_H"; }

const char *kind(Kind kind) {
    constexpr const char *constants[] = {
        "TLVMSG_SCALAR",        "TLVMSG_ENUMERATION",  "TLVMSG_STRUCTURE",  "TLVMSG_MESSAGE",
        "TLVMSG_ELEMENT_ARRAY", "TLVMSG_PACKED_ARRAY", "TLVMSG_BYTE_ARRAY", "TLVMSG_DYNAMIC_ELEMENTS",
        "TLVMSG_DYNAMIC_BYTES", "TLVMSG_UNION"};
    static_assert(std::size(constants) == kinds);
    return constants[static_cast<size_t>(kind)];
}

std::string descriptor(const Type &type) { return "tlvmsg_type_of_" + type.name; }
std::string operations(const Type &type) { return "tlvmsg_operations_of_" + type.name; }
std::string members_table(const Type &type) { return "tlvmsg_members_of_" + type.name; }
std::string alternatives_table(const Type &type) { return "tlvmsg_alternatives_of_" + type.name; }
std::string enumerators_table(const Type &type) { return "tlvmsg_enumerators_of_" + type.name; }

// Numbered, because names joined by underscores can come out the same.
std::string values_table(const Type &type, const Alternative &alternative) {
    return "tlvmsg_values_" + std::to_string(&alternative - type.alternatives.data()) + "_of_" + type.name;
}

std::string descriptor_accessor(const Type &type) { return "tlvmsg_descriptor_" + type.name; }
std::string declared_descriptor(const Type &type) { return "TLVMSG_DESCRIPTOR(" + type.name + ")"; }
std::string typed_operations(const Type &type) {
    return (is_array(type) ? "TLVMSG_TYPED_ARRAY(" : "TLVMSG_TYPED(") + type.name + ")";
}

std::string alternatives_union(const Type &type) { return "tlvmsg_union_of_" + type.name; }

} // namespace tlvc::names
