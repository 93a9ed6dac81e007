#include "type_json.h"

#include "tools/lookup.h"

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

// A member or an alternative: its type, with its sizes, and its place in the record.
template <class Part>
Json field(Json begin, const Part &part) {
    begin["type"] = part.type->name;
    begin["offset"] = part.offset;
    begin["size"] = part.type->size;
    begin["min_encoded"] = part.type->min_encoded;
    begin["max_encoded"] = part.type->max_encoded;
    begin["flags"] = flag_words(part.flags);
    return begin;
}

template <class Part, class Describe>
Json list_of(const Part *parts, uint32_t count, Describe describe) {
    Json list = Json::array();
    for (uint32_t i = 0; i < count; ++i) {
        list.push_back(describe(parts[i]));
    }
    return list;
}

void add_array(Json &json, const tlvmsg_type *type) {
    json["element"] = type->element->name;
    json["capacity"] = type->capacity;
    json["count_width"] = type->count_width;
    json["items_offset"] = type->items_offset;
}

void add_union(Json &json, const tlvmsg_type *type) {
    json["selector"] = type->selector->name;
    json["selector_name"] = type->selector_name;
    json["selector_offset"] = type->selector_offset;
    json["alternatives"] =
        list_of(type->alternatives, type->alternative_count, [](const tlvmsg_alternative &each) {
            const std::vector<uint32_t> values(each.values, each.values + each.value_count);
            return field({{"name", each.name}, {"values", values}}, each);
        });
}

} // namespace

Json type_summary(const tlvmsg_type *type) {
    return {{"name", type->name}, {"family", type->family},        {"section", type->section},
            {"doc", type->doc},   {"kind", kind_name(type->kind)}, {"tag", type->tag}};
}

Json type_json(const tlvmsg_type *type) {
    Json json = type_summary(type);
    json["size"] = type->size;
    json["alignment"] = type->alignment;
    json["min_encoded"] = type->min_encoded;
    json["max_encoded"] = type->max_encoded;
    switch (type->kind) {
    case TLVMSG_SCALAR:
        break;
    case TLVMSG_ENUMERATION:
        json["enumerators"] =
            list_of(type->enumerators, type->enumerator_count, [](const tlvmsg_enumerator &each) {
                return Json{{"name", each.name}, {"doc", each.doc}, {"value", each.value}};
            });
        break;
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        json["members"] = list_of(type->members, type->member_count, [](const tlvmsg_member &each) {
            return field({{"path", each.path}, {"doc", each.doc}}, each);
        });
        break;
    case TLVMSG_UNION:
        add_union(json, type);
        break;
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
    case TLVMSG_DYNAMIC_BYTES:
        add_array(json, type);
        break;
    }
    return json;
}

} // namespace tlvmsg::tool
