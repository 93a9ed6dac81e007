#include "type_json.h"

#include "tools/types/lookup.h"

#include <fmt/format.h>

namespace tlvmsg::tool {

namespace {

using Json = nlohmann::ordered_json;

Json flag_words(uint32_t flags) {
    static constexpr std::pair<uint32_t, const char *> words[] = {
        {TLVMSG_SHARED_WITH_NEXT, "shared-with-next"},
        {TLVMSG_ZERO_COUNT, "zero-count"},
        {TLVMSG_END_BY_LENGTH, "end-by-length"}};
    Json list = Json::array();
    for (const auto &[flag, word] : words) {
        if ((flags & flag) != 0) {
            list.push_back(word);
        }
    }
    return list;
}

// A member or an alternative: what is its own, its place in the record, and its type with its sizes.
template <class Part>
Json field(const Part &part, Json own) {
    own.update(Json{{"type", part.type->name},
                    {"offset", part.offset},
                    {"size", part.type->size},
                    {"min_encoded", part.type->min_encoded},
                    {"max_encoded", part.type->max_encoded},
                    {"flags", flag_words(part.flags)}});
    return own;
}

template <class Part, class Object>
void add_list(Json &json, const char *key, const Part *parts, uint32_t count, Object object) {
    for (uint32_t i = 0; i < count; ++i) {
        json[key].push_back(object(parts[i]));
    }
}

} // namespace

Json type_summary(const tlvmsg_type *type) {
    return {{"name", type->name},
            {"family", type->family},
            {"section", type->section},
            {"doc", type->doc},
            {"kind", tlvmsg_kind_name(type->kind)},
            {"tag", type->tag}};
}

Json type_json(const tlvmsg_type *type) {
    Json json = type_summary(type);
    json.update(Json{{"size", type->size},
                     {"alignment", type->alignment},
                     {"min_encoded", type->min_encoded},
                     {"max_encoded", type->max_encoded},
                     {"fingerprint", fmt::format("0x{:016X}", tlvmsg_fingerprint(type))}});
    if ((type->flags & TLVMSG_HAS_KEY) != 0) {
        json["key"] = type->key;
    }
    add_list(json, "enumerators", type->enumerators, type->enumerator_count,
             [](const tlvmsg_enumerator &each) {
                 return Json{{"name", each.name}, {"doc", each.doc}, {"value", each.value}};
             });
    add_list(json, "members", type->members, type->member_count, [](const tlvmsg_member &each) {
        return field(each, {{"path", each.path}, {"doc", each.doc}});
    });
    if (type->element != nullptr) {
        json.update(Json{{"element", type->element->name},
                         {"capacity", type->capacity},
                         {"count_width", type->count_width},
                         {"items_offset", type->items_offset}});
    }
    if (type->selector != nullptr) {
        json.update(Json{{"selector", type->selector->name},
                         {"selector_name", type->selector_name},
                         {"selector_offset", type->selector_offset}});
    }
    add_list(json, "alternatives", type->alternatives, type->alternative_count,
             [](const tlvmsg_alternative &each) {
                 const std::vector<uint32_t> values(each.values, each.values + each.value_count);
                 return field(each, {{"name", each.name}, {"values", values}});
             });
    return json;
}

} // namespace tlvmsg::tool
