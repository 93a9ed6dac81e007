// FAMILY_types.cpp: the descriptors. all_types.h declares them; all_types.cpp indexes them by name and by
// tag.
#include "emit.h"
#include "names.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

std::string quoted(const std::string &text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\' || c == '?') { // "??/" would be a trigraph
            result += '\\';
        }
        result += c;
    }
    return result + "\"";
}

std::string quoted(const Doc &lines) {
    std::string text;
    for (const std::string &line : lines) {
        text += (text.empty() ? "" : " ") + line;
    }
    return quoted(text);
}

std::string offset_of(const std::string &record, const std::string &path) {
    return path.empty() ? "0" : fmt::format("offsetof({}, {})", record, path);
}

std::string any_of(std::initializer_list<std::pair<bool, const char *>> flags) {
    std::string text;
    for (const auto &[set, name] : flags) {
        if (set) {
            text += (text.empty() ? "" : " | ") + std::string(name);
        }
    }
    return text.empty() ? "0" : text;
}

std::string members(const Type &type) {
    std::string text = fmt::format("const tlvmsg_member {}[] = {{\n", names::members_table(type));
    for (const Member &member : type.members) {
        const std::string path = joined(member.path);
        text += fmt::format("    {{{}, {}, &{}, {}, {}}},\n", quoted(path), quoted(member.doc),
                            names::descriptor(*member.type), offset_of(type.name, path),
                            any_of({{member.lives_in_next(), "TLVMSG_SHARED_WITH_NEXT"},
                                    {member.zero_count, "TLVMSG_ZERO_COUNT"}}));
    }
    return text + "};\n";
}

std::string alternatives(const Type &type) {
    std::string text;
    for (const Alternative &alternative : type.alternatives) {
        text += fmt::format("const uint32_t {}[] = {{{}}};\n", names::values_table(type, alternative),
                            fmt::join(alternative.values, ", "));
    }
    text += fmt::format("const tlvmsg_alternative {}[] = {{\n", names::alternatives_table(type));
    for (const Alternative &alternative : type.alternatives) {
        text += fmt::format("    {{{}, &{}, {}, {}, {}, {}}},\n", quoted(alternative.name),
                            names::descriptor(*alternative.type), names::values_table(type, alternative),
                            alternative.values.size(), offset_of(names::record(type), alternative.name),
                            any_of({{alternative.end_by_length, "TLVMSG_END_BY_LENGTH"}}));
    }
    return text + "};\n";
}

std::string enumerators(const Type &type) {
    std::string text = fmt::format("const tlvmsg_enumerator {}[] = {{\n", names::enumerators_table(type));
    for (const Enumerator &each : type.enumerators) {
        text += fmt::format("    {{{}, {}, {}}},\n", quoted(each.name), quoted(each.doc), each.value);
    }
    return text + "};\n";
}

// The fields that only some kinds have.
std::string particulars(const Type &type) {
    if (has_members(type)) {
        return fmt::format("    .members = {}, .member_count = {},\n", names::members_table(type),
                           type.members.size());
    }
    if (type.kind == Kind::Union) {
        return fmt::format("    .alternatives = {}, .alternative_count = {},\n"
                           "    .selector = &{}, .selector_name = {}, .selector_offset = {},\n",
                           names::alternatives_table(type), type.alternatives.size(),
                           names::descriptor(*type.selector), quoted(type.selector_name),
                           offset_of(names::record(type), type.selector_name));
    }
    if (is_array(type)) {
        return fmt::format("    .element = &{}, .capacity = {}, .count_width = {}, .items_offset = {},\n",
                           names::descriptor(*type.element), type.capacity, type.count->scalar->width,
                           offset_of(type.name, type.fields.back().name));
    }
    if (!type.enumerators.empty()) {
        return fmt::format("    .enumerators = {}, .enumerator_count = {},\n", names::enumerators_table(type),
                           type.enumerators.size());
    }
    return "";
}

std::string descriptor(const Type &type) {
    const std::string record = names::record(type);
    return fmt::format(
        "const tlvmsg_type {} = {{\n"
        "    .name = {}, .family = {},\n"
        "    .section = {}, .doc = {},\n"
        "    .kind = {}, .tag = {},\n"
        "    .size = sizeof({}), .alignment = alignof({}),\n"
        "    .min_encoded = {}, .max_encoded = {},\n"
        "{}    .operations = TLVMSG_OPERATIONS_OF({}),\n}};\n\n",
        names::descriptor(type), quoted(type.name), quoted(type.family == nullptr ? "" : type.family->name),
        quoted(type.section == nullptr ? Doc() : type.section->doc), quoted(type.doc), names::kind(type.kind),
        type.tag, record, record, type.min_size, type.max_size, particulars(type), names::operations(type));
}

std::string includes(const std::string &family) {
    return "#include \"all_types.h\"\n\n" +
           (family.empty() ? "" : fmt::format("#include <tlvmsg/{}.h>\n\n", family)) +
           // What a descriptor does not mention is zero.
           "#pragma GCC diagnostic ignored \"-Wmissing-field-initializers\"\n\n";
}

// The tables of a type, and the descriptor that refers to them.
std::string definition(const Type &type) {
    if (has_members(type)) {
        return members(type) + descriptor(type);
    }
    const std::string tables = type.kind == Kind::Union    ? alternatives(type)
                               : !type.enumerators.empty() ? enumerators(type)
                                                           : "";
    return tables + descriptor(type);
}

std::string family_types(const Family &family) {
    std::string text = "// Generated by tlvc. Descriptors of the family's types.\n" + includes(family.name);
    for (const Type *type : family.types) {
        text += definition(*type);
    }
    return text;
}

std::string declarations(const Schema &schema) {
    std::string text =
        "// Generated by tlvc. Every descriptor.\n#pragma once\n\n#include \"inspect/index.h\"\n\n";
    for (const Type &type : schema.types) {
        text += fmt::format("extern const tlvmsg_operations {};\n", names::operations(type));
    }
    // Programs share the addresses. Protected, so that all in the library is bound to what is here.
    text += "\n#pragma GCC visibility push(protected)\n";
    for (const Type &type : schema.types) {
        text += fmt::format("extern const tlvmsg_type {};\n", names::descriptor(type));
    }
    return text + "#pragma GCC visibility pop\n";
}

std::string index(const std::string &name, const std::vector<const Type *> &types) {
    std::string text = fmt::format("const tlvmsg_type *const {}[] = {{\n", name);
    for (const Type *type : types) {
        text += fmt::format("    &{},\n", names::descriptor(*type));
    }
    return text + fmt::format("    nullptr,\n}};\nconst size_t {}_count = {};\n\n", name, types.size());
}

std::string indexes(const Schema &schema) {
    std::string text =
        "// Generated by tlvc. The scalars' descriptors, and every type by name and by tag.\n" + includes("");
    std::vector<const Type *> named;
    std::vector<const Type *> tagged;
    for (const Type &type : schema.types) {
        named.push_back(&type);
        if (has_tag(type)) {
            tagged.push_back(&type);
        }
        if (type.scalar != nullptr) {
            text += definition(type);
        }
    }
    std::sort(named.begin(), named.end(), [](auto *a, auto *b) { return a->name < b->name; });
    std::sort(tagged.begin(), tagged.end(), [](auto *a, auto *b) { return a->tag < b->tag; });
    return text + index("tlvmsg_types_by_name", named) + index("tlvmsg_types_by_tag", tagged);
}

} // namespace

GeneratedFiles emit_types(const Schema &schema) {
    GeneratedFiles files{{"src/all_types.h", declarations(schema)}, {"src/all_types.cpp", indexes(schema)}};
    for (const Family *family : schema.in_order) {
        files.push_back({"src/" + family->name + "_types.cpp", family_types(*family)});
    }
    return files;
}

} // namespace tlvc
