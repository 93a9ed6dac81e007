#include "tables.h"

#include "tools/types/lookup.h"

#include <tlvmsg/record.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <array>
#include <string_view>
#include <utility>

namespace tlvmsg::tool {

namespace {

// Printable text, which Lua escapes as JSON does.
std::string in_quotes(std::string_view text) { return nlohmann::json(text).dump(); }

// Nothing where nothing is said.
std::string doc_behind(const char *separator, const char *doc) {
    return *doc == '\0' ? "" : separator + in_quotes(doc);
}

// The library's words for a fault, with names in braces where a fault has its numbers.
std::string fault_template(tlvmsg_code code) {
    const tlvmsg_fault fault{code, 1000001, 2000002, 3000003, "{path}", {}};
    std::string text(TLVMSG_FAULT_TEXT, '\0');
    text.resize(tlvmsg_fault_message(&fault, text.data(), text.size()));
    constexpr std::pair<std::string_view, const char *> names[] = {
        {"1000001", "{offset}"}, {"2000002", "{found}"}, {"3000003", "{allowed}"}};
    for (const auto &[number, name] : names) {
        if (const size_t at = text.find(number); at != std::string::npos) {
            text.replace(at, number.size(), name);
        }
    }
    return text;
}

// ---- One function for what a kind of type has of its own ----

std::string values_of(const tlvmsg_type *type) {
    std::string text;
    for (uint32_t i = 0; i < type->enumerator_count; ++i) {
        text += fmt::format("[{}]={},", type->enumerators[i].value, in_quotes(type->enumerators[i].name));
    }
    return text.empty() ? "" : ", values={" + text + "}";
}

std::string members_of(const tlvmsg_type *type) {
    std::string text;
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const tlvmsg_member &member = type->members[i];
        text += fmt::format("\n  {{{},{}{}}},", in_quotes(member.path), in_quotes(member.type->name),
                            doc_behind(",", member.doc));
    }
    return ", members={" + text + "}";
}

// And where the number stands that says so.
std::string key_of(const tlvmsg_type *type) {
    tlvmsg_key_place place;
    return (type->flags & TLVMSG_HAS_KEY) == 0 ? ""
           : tlvmsg_key_field(type, &place)
               ? fmt::format(", key={}, key_at={}", type->key, place.encoded_offset)
               : fmt::format(", key={}", type->key);
}

std::string alternatives_of(const tlvmsg_type *type) {
    std::string text;
    for (uint32_t i = 0; i < type->alternative_count; ++i) {
        const tlvmsg_alternative &each = type->alternatives[i];
        text += fmt::format("\n  {{{},{},{{{}}},{}}},", in_quotes(each.name), in_quotes(each.type->name),
                            fmt::join(each.values, each.values + each.value_count, ","),
                            (each.flags & TLVMSG_END_BY_LENGTH) != 0);
    }
    return ", alternatives={" + text + "}";
}

// A bounded array has a capacity, a dynamic one the width of its count and, unless of bytes, the size of an item.
std::string array_of(const tlvmsg_type *type) {
    const std::string element = ", element=" + in_quotes(type->element->name);
    if (!tlvmsg_type_is_dynamic(type)) {
        return fmt::format("{}, capacity={}", element, type->capacity);
    }
    const std::string item =
        tlvmsg_type_is_bytes(type) ? "" : fmt::format(", item_size={}", type->element->size);
    return fmt::format("{}, count_width={}{}", element, type->count_width, item);
}

// What the dissector calls the kind, and the rest.
std::pair<const char *, std::string> entry_of(const tlvmsg_type *type) {
    switch (type->kind) {
    case TLVMSG_SCALAR:
        return {"scalar", fmt::format(", width={}, reads={}", type->size, tlvmsg_type_tag_read(type))};
    case TLVMSG_ENUMERATION:
        return {"enumeration", values_of(type)};
    case TLVMSG_STRUCTURE:
        return {"structure", members_of(type)};
    case TLVMSG_MESSAGE:
        return {"message", key_of(type) + members_of(type)};
    case TLVMSG_UNION:
        return {"union", alternatives_of(type)};
    case TLVMSG_PACKED_ARRAY:
        return {"packed", array_of(type)};
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_BYTES:
        return {"bytes", array_of(type)};
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
        return {"elements", array_of(type)};
    }
    return {};
}

} // namespace

std::string wireshark_tables(const std::string &name) {
    std::string text =
        fmt::format("local tables = {{\nname = {}, session = {{\"app_sess_hdr\", \"msg_type\"}},\n"
                    "codes = {{\n",
                    in_quotes(name));
    for (int i = TLVMSG_TRUNCATED; i < TLVMSG_CODE_COUNT; ++i) {
        const auto code = static_cast<tlvmsg_code>(i);
        text += fmt::format("[{}]={},\n", in_quotes(tlvmsg_code_name(code)), in_quotes(fault_template(code)));
    }
    text += "},\ntypes = {\n";
    for (const tlvmsg_type *type : all_types()) {
        const auto [kind, rest] = entry_of(type);
        const bool has_tag = type->tag != 0 && type->element == nullptr;
        text += fmt::format("{{name={}, kind={}{}{}{}}},\n", in_quotes(type->name), in_quotes(kind),
                            has_tag ? fmt::format(", tag={}", type->tag) : "", rest,
                            doc_behind(", doc=", type->doc));
    }
    return text + "}}\n\n";
}

} // namespace tlvmsg::tool
