// Messages without a type as JSON and as lines.
#include "json_value.h"
#include "raw.h"
#include "record.h"
#include "text.h"

#include <tlvmsg/inspect.h>

#include <fmt/format.h>

namespace tlvmsg::tool {

namespace {

using Bytes = std::span<const uint8_t>;

Record record_of(Bytes bytes, const RawElement &raw) {
    Record record(raw.type);
    const Bytes own = raw.element.own(bytes);
    tlvmsg_decode(raw.type, own.data(), own.size(), nullptr, record.data(), nullptr, nullptr);
    return record;
}

OrderedJson json_of_list(Bytes bytes, const std::vector<RawElement> &elements);

OrderedJson json_of_element(Bytes bytes, const RawElement &raw) {
    switch (raw.kind) {
    case RawKind::typed:
        return json_of(raw.type, record_of(bytes, raw).data());
    case RawKind::number:
        return json_of_number(raw.type, raw_number(bytes, raw));
    case RawKind::elements:
    case RawKind::array:
        return json_of_list(bytes, raw.inside);
    case RawKind::bytes:
        return json_of_bytes(raw_bytes(bytes, raw));
    case RawKind::opaque:
        break;
    }
    return json_of_hex(raw.element.inside(bytes));
}

OrderedJson json_of_list(Bytes bytes, const std::vector<RawElement> &elements) {
    OrderedJson list = OrderedJson::array();
    for (const RawElement &raw : elements) {
        OrderedJson object = OrderedJson::object();
        object[raw.name()] = json_of_element(bytes, raw);
        list.push_back(std::move(object));
    }
    return list;
}

void add_text(Bytes bytes, const std::string &above, const RawElement &raw, std::string &text) {
    const std::string path = above + raw.name();
    switch (raw.kind) {
    case RawKind::typed:
        text += to_text(raw.type, record_of(bytes, raw).data(), path);
        break;
    case RawKind::number:
        text += fmt::format("{} = {}\n", path, number_text(raw.type, raw_number(bytes, raw)));
        break;
    case RawKind::elements:
    case RawKind::array:
        for (const RawElement &inside : raw.inside) {
            add_text(bytes, path + ".", inside, text);
        }
        break;
    case RawKind::bytes:
        text += fmt::format("{} = {}\n", path, bytes_text(raw_bytes(bytes, raw)));
        break;
    case RawKind::opaque:
        text += fmt::format("{} = hex({})\n", path, hex_pairs(raw.element.inside(bytes)));
        break;
    }
}

} // namespace

std::string raw_json(Bytes bytes, const RawMessage &message, int indent) {
    return json_of_list(bytes, message.elements).dump(indent);
}

std::string raw_text(Bytes bytes, const RawMessage &message) {
    std::string text;
    for (const RawElement &raw : message.elements) {
        add_text(bytes, "", raw, text);
    }
    return text;
}

} // namespace tlvmsg::tool
