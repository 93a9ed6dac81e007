// Records to JSON.
#include "fields.h"
#include "json.h"

#include <tlvmsg/inspect.h>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace tlvmsg::tool {

namespace {

using Json = nlohmann::ordered_json;

Json value(const tlvmsg_type *type, const void *record);

Json number(const tlvmsg_type *type, const void *field) {
    const uint64_t number = load(type, field);
    return tlvmsg_type_is_signed(type) ? Json(static_cast<int64_t>(number)) : Json(number);
}

std::string hex(const Items &bytes) {
    constexpr const char *digits = "0123456789abcdef";
    std::string text;
    for (size_t i = 0; i < bytes.readable; ++i) {
        text += digits[bytes.first[i] >> 4];
        text += digits[bytes.first[i] & 15];
    }
    return text;
}

Json byte_array(const Items &bytes) {
    const bool printable = std::all_of(bytes.first, bytes.first + bytes.readable,
                                       [](uint8_t byte) { return byte >= 0x20 && byte < 0x7f; });
    return printable ? Json(std::string(bytes.first, bytes.first + bytes.readable))
                     : Json{{"hex", hex(bytes)}};
}

Json array(const tlvmsg_type *type, const void *record) {
    const Items items = items_of(*type, record);
    if (items_missing(items)) {
        return {{"count", items.count}, {"items", nullptr}};
    }
    if (is_bytes(type)) {
        return byte_array(items);
    }
    Json list = Json::array();
    for (size_t i = 0; i < items.readable; ++i) {
        list.push_back(value(type->element, items.item(*type, i)));
    }
    return list;
}

void put_union(Json &object, const tlvmsg_type *type, const void *record) {
    object[type->selector_name] = load(type->selector, at_offset(record, type->selector_offset));
    if (const tlvmsg_alternative *alternative = chosen_in(*type, record)) {
        object[alternative->name] = value(alternative->type, at_offset(record, alternative->offset));
    }
}

Json structure(const tlvmsg_type *type, const void *record) {
    Json object = Json::object();
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const tlvmsg_member &member = type->members[i];
        const void *field = at_offset(record, member.offset);
        if (*member.path == '\0') {
            put_union(object, member.type, field);
        } else if ((member.flags & TLVMSG_SHARED_WITH_NEXT) == 0) {
            object[member.path] = value(member.type, field);
        }
    }
    return object;
}

Json value(const tlvmsg_type *type, const void *record) {
    switch (type->kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return number(type, record);
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        return structure(type, record);
    case TLVMSG_UNION: {
        Json object;
        put_union(object, type, record);
        return object;
    }
    default:
        return array(type, record);
    }
}

} // namespace

std::string to_json(const tlvmsg_type *type, const void *record, int indent) {
    return value(type, record).dump(indent);
}

} // namespace tlvmsg::tool
