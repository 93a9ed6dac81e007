// FAMILY_codecs.h says which rule and which members make each codec; FAMILY_codecs.cpp exports the exact
// operations, and FAMILY_bounded.cpp defines the strict ones that descriptors refer to.
#include "compiler/emit/emit.h"
#include "compiler/model/attributes.h"
#include "compiler/model/names.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

std::string member_codec(const Type &owner, size_t index) {
    const Member &member = owner.members[index];
    std::string_view rule = "member";
    for (const Attribute *each : member.attributes) {
        rule = each->rule;
    }
    std::string text = fmt::format("::tlvmsg::rules::{}<{}", rule, names::codec(*member.type));
    std::string record = names::record(owner);
    for (const std::string &step : member.path) {
        text += fmt::format(", &::{}::{}", record, step);
        if (index + 1 < owner.members.size()) {
            record = names::record(*owner.members[index + 1].type);
        }
    }
    return text + ">";
}

// Whether the rules take a type for one of fixed size, which no array is to them.
bool is_fixed(const Type &type) {
    return type.kind == Kind::Scalar || type.kind == Kind::Enumeration ||
           (type.kind == Kind::Structure &&
            std::all_of(type.members.begin(), type.members.end(),
                        [](const Member &each) { return is_fixed(*each.type); }));
}

// Neighbours of one type and fixed size lie in the record like the items of an array, and one rule serves
// them together.
size_t length_of_run(const Type &owner, size_t first) {
    const Member &head = owner.members[first];
    size_t end = first + 1;
    const auto joins = [&](const Member &member) {
        return member.role == Member::Role::Own && member.attributes.empty() && member.type == head.type &&
               is_fixed(*head.type);
    };
    while (joins(head) && end < owner.members.size() && joins(owner.members[end])) {
        ++end;
    }
    return end - first;
}

// Nearly all messages open with the same two structures, which one rule serves together.
bool has_opening(const Type &owner) {
    return owner.kind == Kind::Message && owner.members.size() >= 2 &&
           std::all_of(owner.members.begin(), owner.members.begin() + 2, [](const Member &each) {
               return each.type->kind == Kind::Structure && each.attributes.empty() && is_fixed(*each.type);
           });
}

std::string member_codecs(const Type &owner) {
    std::string text;
    size_t i = 0;
    if (has_opening(owner)) {
        text = fmt::format(",\n    ::tlvmsg::rules::opening<{},\n        {}>", member_codec(owner, 0),
                           member_codec(owner, 1));
        i = 2;
    }
    while (i < owner.members.size()) {
        const size_t length = length_of_run(owner, i);
        text += ",\n    ";
        text += length == 1 ? member_codec(owner, i)
                            : fmt::format("::tlvmsg::rules::run<{}, {}, &::{}::{}>",
                                          names::codec(*owner.members[i].type), length, names::record(owner),
                                          owner.members[i].name);
        i += length;
    }
    return text;
}

std::string alternative_codec(const Type &owner, const Alternative &alternative) {
    std::string codec = names::codec(*alternative.type);
    for (const Attribute *each : alternative.attributes) {
        codec = fmt::format("::tlvmsg::rules::{}<{}>", each->rule, codec);
    }
    std::string text = fmt::format("::tlvmsg::rules::alternative<{}, &::{}::{}", codec, names::record(owner),
                                   alternative.name);
    for (const uint32_t value : alternative.values) {
        text += fmt::format(", {}", value);
    }
    return text + ">";
}

// The rule that a type is made by, as the base of its codec.
std::string rule(const Type &type) {
    const std::string record = "::" + names::record(type);
    switch (type.kind) {
    case Kind::Enumeration:
        return fmt::format("enumeration<{}>", type.tag);
    case Kind::ElementArray:
        return fmt::format("element_array<{}, {}, {}>", record, names::codec(*type.element), type.capacity);
    case Kind::PackedArray:
        return fmt::format("packed_array<{}, {}, {}>", record, names::codec(*type.element), type.capacity);
    case Kind::ByteArray:
        return fmt::format("byte_array<{}, {}>", record, type.capacity);
    case Kind::DynamicElements:
        return fmt::format("dynamic_elements<{}, {}>", record, names::codec(*type.element));
    case Kind::DynamicBytes:
        return fmt::format("dynamic_bytes<{}>", record);
    case Kind::Structure:
    case Kind::Message: {
        const std::string opening = type.kind == Kind::Message
                                        ? fmt::format("message<{}", record)
                                        : fmt::format("structure<{}, {}", type.tag, record);
        return opening + member_codecs(type) + ">";
    }
    case Kind::Union: {
        std::string text = fmt::format("union_of<{}, &{}::{}", record, record, type.selector_name);
        for (const Alternative &alternative : type.alternatives) {
            text += ",\n    " + alternative_codec(type, alternative);
        }
        return text + ">";
    }
    case Kind::Scalar:
        break;
    }
    return {};
}

std::string declarations(const Family &family) {
    std::string text =
        "// Generated by tlvc. Which rule and which members make each codec.\n#pragma once\n\n";
    for (const Family *used : family.uses) {
        text += fmt::format("#include \"{}_codecs.h\"\n", used->name);
    }
    text += fmt::format("#include \"rules/rules.h\"\n\n#include <tlvmsg/{}.h>\n\n"
                        "namespace tlvmsg::codec {{\n\n"
                        // Inline, since types may be called as rules are.
                        "inline namespace {{\n\n",
                        family.name);
    for (const Type *type : family.types) {
        text += fmt::format("struct {} : ::tlvmsg::rules::{} {{}};\n", type->name, rule(*type));
    }
    return text + "\n} // namespace\n\n} // namespace tlvmsg::codec\n";
}

std::string exports(const Family &family) {
    std::string text = fmt::format("// Generated by tlvc. The exported operations of the family.\n"
                                   "#include \"{}_codecs.h\"\n\n",
                                   family.name);
    for (const Type *type : family.types) {
        text += fmt::format("TLVMSG_EXPORT_TYPE({}, {})\n", type->name, names::record(*type));
    }
    return text;
}

std::string bounded(const std::string &name, const std::vector<const Type *> &types) {
    std::string text = fmt::format("// Generated by tlvc. The strict operations of {0}.\n"
                                   "#include \"rules/bounded.h\"\n\n",
                                   name.empty() ? "the scalars" : "the family's types");
    text += name.empty() ? "" : fmt::format("#include \"{}_codecs.h\"\n\n", name);
    for (const Type *type : types) {
        text += fmt::format("TLVMSG_OPERATIONS({}, {})\n", names::operations(*type), names::codec(*type));
    }
    return text;
}

} // namespace

GeneratedFiles emit_scalars(const Schema &schema) {
    std::vector<const Type *> scalars;
    for (const Type &type : schema.types) {
        if (type.scalar != nullptr) {
            scalars.push_back(&type);
        }
    }
    return {{"src/all_bounded.cpp", bounded("", scalars)}};
}

GeneratedFiles emit_codecs(const Family &family, Product) {
    return {{"src/" + family.name + "_codecs.h", declarations(family)},
            {"src/" + family.name + "_codecs.cpp", exports(family)},
            {"src/" + family.name + "_bounded.cpp", bounded(family.name, family.types)}};
}

} // namespace tlvc
