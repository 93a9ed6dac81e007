// FAMILY_types.cpp: the descriptors, and of users' families what registers them. all_types.cpp: the scalars'.
// all_index.cpp: the index of the library's own types, apart from all descriptors, so that a program which is linked
// statically and looks nothing up has the types alone that it names.
#include "compiler/emit/emit.h"
#include "compiler/model/attributes.h"
#include "compiler/model/fingerprint.h"
#include "compiler/model/names.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

std::string c_string(const std::string &text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\' || c == '?') { // "??/" would be a trigraph
            result += '\\';
        }
        result += c;
    }
    return result + "\"";
}

std::string c_string(const Doc &lines) {
    std::string text;
    for (const std::string &line : lines) {
        text += (text.empty() ? "" : " ") + line;
    }
    return c_string(text);
}

std::string offset_of(const std::string &record, const std::string &path) {
    return path.empty() ? "0" : fmt::format("offsetof({}, {})", record, path);
}

std::string flag_names(const Attributes &attributes, bool shared_with_next) {
    std::vector<std::string_view> names;
    if (shared_with_next) {
        names.push_back("TLVMSG_SHARED_WITH_NEXT");
    }
    for (const Attribute *each : attributes) {
        names.push_back(each->flag_name);
    }
    return names.empty() ? "0" : fmt::format("{}", fmt::join(names, " | "));
}

// Aligned no more than it has to be, as descriptors are.
std::string opened_table(const char *item, const std::string &name) {
    return fmt::format("alignas({0}) const {0} {1}[] = {{\n", item, name);
}

std::string member_rows(const Type &type) {
    std::string text = opened_table("tlvmsg_member", names::members_table(type));
    for (const Member &member : type.members) {
        const std::string path = joined(member.path);
        text += fmt::format("    {{{}, {}, &{}, {}, {}}},\n", c_string(path), c_string(member.doc),
                            names::descriptor(*member.type), offset_of(names::record(type), path),
                            flag_names(member.attributes, member.lives_in_next()));
    }
    return text + "};\n";
}

std::string alternative_rows(const Type &type) {
    std::string text;
    for (const Alternative &alternative : type.alternatives) {
        text += fmt::format("const uint32_t {}[] = {{{}}};\n", names::values_table(type, alternative),
                            fmt::join(alternative.values, ", "));
    }
    text += opened_table("tlvmsg_alternative", names::alternatives_table(type));
    for (const Alternative &alternative : type.alternatives) {
        text += fmt::format("    {{{}, &{}, {}, {}, {}, {}}},\n", c_string(alternative.name),
                            names::descriptor(*alternative.type), names::values_table(type, alternative),
                            alternative.values.size(), offset_of(names::record(type), alternative.name),
                            flag_names(alternative.attributes, false));
    }
    return text + "};\n";
}

std::string enumerator_rows(const Type &type) {
    std::string text = opened_table("tlvmsg_enumerator", names::enumerators_table(type));
    for (const Enumerator &each : type.enumerators) {
        text += fmt::format("    {{{}, {}, {}}},\n", c_string(each.name), c_string(each.doc), each.value);
    }
    return text + "};\n";
}

// The fields that only some kinds have.
std::string form_fields(const Type &type) {
    if (has_members(type)) {
        return fmt::format("    .members = {}, .member_count = {},\n", names::members_table(type),
                           type.members.size());
    }
    if (type.kind == Kind::Union) {
        return fmt::format("    .alternatives = {}, .alternative_count = {},\n"
                           "    .selector = &{}, .selector_name = {}, .selector_offset = {},\n",
                           names::alternatives_table(type), type.alternatives.size(),
                           names::descriptor(*type.selector), c_string(type.selector_name),
                           offset_of(names::record(type), type.selector_name));
    }
    if (is_array(type)) {
        return fmt::format("    .element = &{}, .capacity = {}, .count_width = {}, .items_offset = {},\n",
                           names::descriptor(*type.element), type.capacity, type.count->scalar->width,
                           offset_of(names::record(type), type.fields.back().name));
    }
    if (!type.enumerators.empty()) {
        return fmt::format("    .enumerators = {}, .enumerator_count = {},\n", names::enumerators_table(type),
                           type.enumerators.size());
    }
    return "";
}

std::string flag_names(const Type &type) {
    return is_signed(type) ? "TLVMSG_SIGNED" : type.key ? "TLVMSG_HAS_KEY" : "0";
}

std::string descriptor(const Type &type) {
    const std::string record = names::record(type);
    return fmt::format("extern const tlvmsg_operations {};\n"
                       "TLVMSG_TYPE_OBJECT({}) = {{\n"
                       "    .name = {}, .family = {},\n"
                       "    .section = {}, .doc = {},\n"
                       "    .kind = {}, .tag = {}, .flags = {},\n"
                       "    .size = sizeof({}), .alignment = alignof({}),\n"
                       "    .min_encoded = {}, .max_encoded = {},\n"
                       "{}    .operations = TLVMSG_OPERATIONS_OF({}),\n"
                       "    .fingerprint = UINT64_C({}), .key = UINT32_C({}),\n}};\n\n",
                       names::operations(type), type.name, c_string(type.name),
                       c_string(type.family == nullptr ? "" : type.family->name),
                       c_string(type.section == nullptr ? Doc() : type.section->doc), c_string(type.doc),
                       names::kind(type.kind), type.tag, flag_names(type), record, record, type.min_size,
                       type.max_size, form_fields(type), names::operations(type), spelled_fingerprint(type),
                       type.key.value_or(0));
}

// The tables of a type, and the descriptor that refers to them.
std::string definition(const Type &type) {
    if (has_members(type)) {
        return member_rows(type) + descriptor(type);
    }
    const std::string tables = type.kind == Kind::Union    ? alternative_rows(type)
                               : !type.enumerators.empty() ? enumerator_rows(type)
                                                           : "";
    return tables + descriptor(type);
}

std::string opening(const std::string &what, const std::string &header) {
    return fmt::format(
        "// Generated by tlvc. {}\n#include \"runtime/operations.h\"\n\n#include <tlvmsg/{}>\n\n"
        // What a descriptor does not mention is zero.
        "#pragma GCC diagnostic ignored \"-Wmissing-field-initializers\"\n\n",
        what, header);
}

std::string table(const char *name, const std::vector<const Type *> &types) {
    std::string text = fmt::format("static const tlvmsg_type *const {}[] = {{\n", name);
    for (const Type *type : types) {
        text += fmt::format("    &{},\n", names::descriptor(*type));
    }
    return text + "    nullptr,\n};\n\n";
}

// What makes types findable: by name and by tag.
std::string registration(const std::string &object, const std::string &family,
                         std::vector<const Type *> types) {
    const std::string version = fmt::format("TLVMSG_VERSION_NUMBER({})", TLVC_VERSION_NUMBERS);
    std::sort(types.begin(), types.end(), [](auto *a, auto *b) { return a->name < b->name; });
    std::string text = table("by_name", types);
    const size_t count = types.size();
    std::erase_if(types, [](auto *type) { return !has_tag(*type); });
    std::sort(types.begin(), types.end(), [](auto *a, auto *b) { return a->tag < b->tag; });
    return text + table("by_tag", types) +
           fmt::format("#if {0} / 1000 != TLVMSG_VERSION / 1000\n"
                       "#error \"generated by the tlvc of another version of tlvmsg\"\n#endif\n"
                       "tlvmsg_family {1} = {{\n    .version = {0}, .name = \"{2}\",\n"
                       "    .types = by_name, .type_count = {3}, .tagged = by_tag, .tagged_count = {4},\n"
                       "    .next = nullptr,\n}};\n",
                       version, object, family, count, types.size());
}

} // namespace

GeneratedFiles emit_types(const Family &family, Product product) {
    std::string text = opening("Descriptors of the family's types.", "bounded/" + family.name + ".h");
    for (const Type *type : family.types) {
        text += definition(*type);
    }
    if (product == Product::Families) {
        text += "#pragma GCC visibility push(default)\n" +
                registration("tlvmsg_family_" + family.name, family.name, family.types) +
                "#pragma GCC visibility pop\n";
    }
    return {{"src/" + family.name + "_types.cpp", text}};
}

GeneratedFiles emit_index(const Schema &schema) {
    std::string scalars = opening("Descriptors of the scalars.", "types.h");
    std::string index = opening("Every type by name and by tag.", "register.h");
    std::vector<const Type *> types;
    for (const Type &type : schema.types) {
        types.push_back(&type);
        index += fmt::format("extern const tlvmsg_type {};\n", names::descriptor(type));
        if (type.scalar != nullptr) {
            scalars += definition(type);
        }
    }
    return {{"src/all_types.cpp", scalars},
            {"src/all_index.cpp", index + registration("tlvmsg_built_in", "", types)}};
}

} // namespace tlvc
