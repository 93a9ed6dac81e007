/*
 * Messages of which nobody said the type: one element behind the other, as their tags name them.
 *
 * An element whose tag is an enumeration's or a structure's, and which that type accepts, is typed: its
 * descriptor tells the rest. What its type refuses, and what no type has, is taken apart by headers alone as
 * far as these fit into one another.
 */
#pragma once

#include "element.h"

#include <string>
#include <vector>

namespace tlvmsg::tool {

enum class RawKind {
    typed,    // by `type`
    number,   // of the scalar `type`
    elements, // nothing but whole elements
    array,    // a count, and that many elements
    bytes,    // a count, and that many bytes, perhaps a zero byte behind them
    opaque
};

struct RawElement {
    Element element;
    RawKind kind;
    const tlvmsg_type *type; // that the tag names; null for arrays and unknown tags
    std::vector<RawElement> inside;

    std::string name() const; // "app_sess_hdr", "array", "tag 1300"
};

struct RawMessage {
    std::vector<RawElement> elements;
    size_t end; // what is behind is no whole element
};

RawMessage read_raw(std::span<const uint8_t> bytes);

// Of a scalar's element.
uint64_t raw_number(std::span<const uint8_t> bytes, const RawElement &element);

// Of an array's bytes.
std::span<const uint8_t> raw_bytes(std::span<const uint8_t> bytes, const RawElement &element);

// A list of one object an element: [{"app_sess_hdr": {...}}, {"uint16": 5}, {"tag 1300": {"hex": "00"}}].
std::string raw_json(std::span<const uint8_t> bytes, const RawMessage &message, unsigned indent);

// A line a value: "app_sess_hdr.msg_type = 17".
std::string raw_text(std::span<const uint8_t> bytes, const RawMessage &message);

} // namespace tlvmsg::tool
