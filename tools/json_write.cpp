// Records to JSON.
#include "fields.h"
#include "json.h"
#include "json_value.h"
#include "text.h"

#include <tlvmsg/inspect.h>

#include <fmt/format.h>

namespace tlvmsg::tool {

namespace {

OrderedJson array(const tlvmsg_type *type, const void *record) {
    const tlvmsg_items items = tlvmsg_items_of(type, record);
    if (items_missing(items)) {
        return {{"count", items.count}, {"items", nullptr}};
    }
    if (tlvmsg_type_is_bytes(type)) {
        return json_of_bytes({items.first, static_cast<size_t>(items.readable)});
    }
    OrderedJson list = OrderedJson::array();
    for (size_t i = 0; i < items.readable; ++i) {
        list.push_back(json_of(type->element, item_at(type, items, i)));
    }
    return list;
}

void put_union(OrderedJson &object, const tlvmsg_type *type, const void *record) {
    object[type->selector_name] = tlvmsg_load(type->selector, at_offset(record, type->selector_offset));
    if (const tlvmsg_alternative *alternative = tlvmsg_chosen_in(type, record)) {
        object[alternative->name] = json_of(alternative->type, at_offset(record, alternative->offset));
    }
}

OrderedJson structure(const tlvmsg_type *type, const void *record) {
    OrderedJson object = OrderedJson::object();
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const tlvmsg_member &member = type->members[i];
        const void *field = at_offset(record, member.offset);
        if (*member.path == '\0') {
            put_union(object, member.type, field);
        } else if ((member.flags & TLVMSG_SHARED_WITH_NEXT) == 0) {
            object[member.path] = json_of(member.type, field);
        }
    }
    return object;
}

} // namespace

OrderedJson json_of(const tlvmsg_type *type, const void *record) {
    switch (type->kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return json_of_number(type, tlvmsg_load(type, record));
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        return structure(type, record);
    case TLVMSG_UNION: {
        OrderedJson object;
        put_union(object, type, record);
        return object;
    }
    default:
        return array(type, record);
    }
}

OrderedJson json_of_number(const tlvmsg_type *type, uint64_t value) {
    return tlvmsg_type_is_signed(type) ? OrderedJson(static_cast<int64_t>(value)) : OrderedJson(value);
}

OrderedJson json_of_bytes(std::span<const uint8_t> bytes) {
    return is_printable(bytes) ? OrderedJson(std::string(bytes.begin(), bytes.end())) : json_of_hex(bytes);
}

OrderedJson json_of_hex(std::span<const uint8_t> bytes) {
    return {{"hex", fmt::format("{:02x}", fmt::join(bytes, ""))}};
}

std::string to_json(const tlvmsg_type *type, const void *record, int indent) {
    return json_of(type, record).dump(indent);
}

} // namespace tlvmsg::tool
