// Messages without a type as JSON and as lines.
#include "json.h"
#include "raw.h"
#include "record.h"
#include "text.h"

#include <tlvmsg/inspect.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

namespace {

using Json = nlohmann::ordered_json;
using Bytes = std::span<const uint8_t>;

Bytes own_bytes(Bytes bytes, const RawElement &raw) {
    return bytes.subspan(raw.element.offset, raw.element.end() - raw.element.offset);
}

Bytes value_bytes(Bytes bytes, const RawElement &raw) {
    return bytes.subspan(raw.element.value(), raw.element.length);
}

Record record_of(Bytes bytes, const RawElement &raw) {
    Record record(raw.type);
    const Bytes own = own_bytes(bytes, raw);
    tlvmsg_decode(raw.type, own.data(), own.size(), nullptr, record.data(), nullptr, nullptr);
    return record;
}

Json json_of_bytes(Bytes bytes) {
    if (is_printable(bytes)) {
        return std::string(bytes.begin(), bytes.end());
    }
    return {{"hex", fmt::format("{:02x}", fmt::join(bytes, ""))}};
}

Json json_of_list(Bytes bytes, const std::vector<RawElement> &elements);

Json json_of(Bytes bytes, const RawElement &raw) {
    switch (raw.kind) {
    case RawKind::typed:
        return Json::parse(to_json(raw.type, record_of(bytes, raw).data(), -1));
    case RawKind::number: {
        const uint64_t value = raw_number(bytes, raw);
        return tlvmsg_type_is_signed(raw.type) ? Json(static_cast<int64_t>(value)) : Json(value);
    }
    case RawKind::elements:
    case RawKind::array:
        return json_of_list(bytes, raw.inside);
    case RawKind::bytes:
        return json_of_bytes(raw_bytes(bytes, raw));
    case RawKind::opaque:
        break;
    }
    return {{"hex", fmt::format("{:02x}", fmt::join(value_bytes(bytes, raw), ""))}};
}

Json json_of_list(Bytes bytes, const std::vector<RawElement> &elements) {
    Json list = Json::array();
    for (const RawElement &raw : elements) {
        Json object = Json::object();
        object[raw.name()] = json_of(bytes, raw);
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
        text += fmt::format("{} = hex({})\n", path, hex_pairs(value_bytes(bytes, raw)));
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
