#include "compiler/model/names.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc::names {

namespace {

struct Elsewhere {
    std::string_view name;
    std::string_view record;
};

// Types whose names system headers have for structures of their own: <netinet/ip.h> has a struct timestamp. A further
// line changes the C name of a type that programs use, so it is written for a name that was never released.
constexpr Elsewhere names_elsewhere[] = {{"timestamp", "tlvmsg_timestamp"}};

} // namespace

std::string record(const Type &type) {
    if (type.scalar != nullptr) {
        return std::string(type.scalar->record);
    }
    const std::string &name = type.enclosing != nullptr ? type.enclosing->name : type.name;
    const auto *const elsewhere = std::find_if(std::begin(names_elsewhere), std::end(names_elsewhere),
                                               [&](const Elsewhere &each) { return each.name == name; });
    return elsewhere != std::end(names_elsewhere) ? std::string(elsewhere->record) : name;
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

std::string_view word(Constant what) {
    switch (what) {
    case Constant::Tag:
        return "TAG";
    case Constant::Size:
        return "SIZE";
    case Constant::MinSize:
        return "MIN_SIZE";
    case Constant::MaxSize:
        return "MAX_SIZE";
    case Constant::Capacity:
        return "CAPACITY";
    case Constant::Fingerprint:
        return "FINGERPRINT";
    case Constant::Key:
        return "KEY";
    }
    return {};
}

std::string constant(Constant what, const Type &type) {
    return fmt::format("TLVMSG_{}_{}", word(what), type.name);
}

std::vector<Constant> constants(const Type &type) {
    std::vector<Constant> all;
    const auto add = [&](bool has, std::initializer_list<Constant> constants) {
        all.insert(all.end(), constants.begin(), has ? constants.end() : constants.begin());
    };
    add(has_tag(type), {Constant::Tag});
    add(type.capacity != 0, {Constant::Capacity});
    add(type.key.has_value(), {Constant::Key});
    add(type.kind == Kind::Message, {Constant::Fingerprint});
    add(type.family != nullptr && type.fixed_size(), {Constant::Size});
    add(type.family != nullptr && !type.fixed_size(), {Constant::MinSize, Constant::MaxSize});
    return all;
}

std::string enumerator(const Type &enumeration, const Enumerator &enumerator) {
    return enumeration.name + "_" + enumerator.name;
}

std::string choice(const Type &union_type, const Alternative &alternative) {
    return fmt::format("TLVMSG_CHOICE_{}_{}", union_type.name, alternative.name);
}

std::string chooser(const Type &union_type, const Alternative &alternative) {
    return fmt::format("tlvmsg_choose_{}_{}", union_type.name, alternative.name);
}

// The name stands last and as it is, so that no two headers come out the same.
std::string guard(Header form, const std::string &name) {
    const auto word = [&]() -> std::string_view {
        switch (form) {
        case Header::Records:
            return "RECORDS";
        case Header::Bounded:
            return "BOUNDED";
        case Header::Traits:
            return "TRAITS";
        }
        return {};
    };
    return fmt::format("TLVMSG_{}_OF_{}", word(), name);
}

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
std::string declared_descriptor(const Type &type) {
    return fmt::format("TLVMSG_{}({})", type.kind == Kind::Enumeration ? "ENUMERATION" : "DESCRIPTOR",
                       type.name);
}
std::string typed_operations(const Type &type) {
    const std::string macro = is_array(type) ? "TLVMSG_TYPED_ARRAY" : "TLVMSG_TYPED";
    return record(type) == type.name ? fmt::format("{}({})", macro, type.name)
                                     : fmt::format("{}_AS({}, {})", macro, type.name, record(type));
}

std::string declared_chooser(const Type &union_type, const Alternative &alternative) {
    const bool by_value = alternative.values.size() > 1;
    const std::string fits = fmt::format(", value == {}", fmt::join(alternative.values, " || value == "));
    return fmt::format("TLVMSG_CHOOSE{}({}, {}, {}, {}, {}{})", by_value ? "_BY" : "", union_type.name,
                       record(union_type), union_type.selector_name, alternative.name,
                       field_type(*alternative.type), by_value ? fits : "");
}

std::string alternatives_union(const Type &type) { return "tlvmsg_union_of_" + type.name; }

} // namespace tlvc::names
