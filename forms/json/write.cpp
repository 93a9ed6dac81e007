// Records to JSON.
#include "base/hex.h"
#include "forms/json/writer.h"
#include "forms/record/fields.h"
#include "forms/record/words.h"

namespace tlvmsg::forms {

void JsonWriter::value(const tlvmsg_type *type, const void *record) {
    switch (shape_of(type)) {
    case Shape::number:
        return number(type, tlvmsg_load(type, record));
    case Shape::fields:
        return fields(type, record);
    case Shape::items:
        return array(type, record);
    }
}

void JsonWriter::number(const tlvmsg_type *type, uint64_t value) {
    if (const tlvmsg_enumerator *named = tlvmsg_enumerator_by_value(type, value)) {
        text.append("\"").append(named->name).append("\"");
    } else {
        text += digits_of(type, value);
    }
}

void JsonWriter::fields(const tlvmsg_type *type, const void *record) {
    open('{');
    for (tlvmsg_field field{}; tlvmsg_next_field(type, record, &field);) {
        key(field.name);
        value(field.type, at_offset(record, field.offset));
    }
    close('}');
}

void JsonWriter::array(const tlvmsg_type *type, const void *record) {
    const tlvmsg_items items = tlvmsg_items_of(type, record);
    if (items_missing(items)) {
        return missing_items(items.count);
    }
    if (tlvmsg_type_is_bytes(type)) {
        return bytes({items.first, static_cast<size_t>(items.readable)});
    }
    open('[');
    for (size_t i = 0; i < items.readable; ++i) {
        next();
        value(type->element, item_at(type, items, i));
    }
    close(']');
}

void JsonWriter::missing_items(uint64_t count) {
    open('{');
    key("count");
    text += std::to_string(count);
    key("items");
    text += "null";
    close('}');
}

void JsonWriter::bytes(std::span<const uint8_t> bytes) {
    if (is_printable(bytes)) {
        text += bytes_text(bytes);
    } else {
        hex(bytes);
    }
}

void JsonWriter::hex(std::span<const uint8_t> bytes) {
    open('{');
    key("hex");
    text += '"' + base::hex_digits(bytes) + '"';
    close('}');
}

// ---- Layout ------------------------------------------------------------------------------------------

void JsonWriter::open(char bracket) {
    text += bracket;
    ++level_;
    empty_ = true;
}

void JsonWriter::next() {
    if (!empty_) {
        text += ',';
    }
    new_line();
    empty_ = false;
}

void JsonWriter::key(std::string_view name) {
    next();
    text += '"';
    text += name;
    text += indent_ > 0 ? "\": " : "\":";
}

void JsonWriter::close(char bracket) {
    --level_;
    if (!empty_) {
        new_line();
    }
    text += bracket;
    empty_ = false;
}

void JsonWriter::new_line() {
    if (indent_ > 0) {
        text += '\n';
        text.append(size_t{indent_} * level_, ' ');
    }
}

} // namespace tlvmsg::forms

bool tlvmsg_to_json(const tlvmsg_type *type, const void *record, const tlvmsg_json_options *options,
                    char **text, size_t *length, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    return hand_out_json(Call(fault).needs("type", type).needs("record", record), options, text, length,
                         [&](JsonWriter &writer) { writer.value(type, record); });
}
