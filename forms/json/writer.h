// JSON as it is laid out here: of records, and of whatever else is put between brackets.
#pragma once

#include "forms/border/block.h"
#include "forms/border/call.h"

#include <tlvmsg/forms/json.h>

#include <span>
#include <string>
#include <string_view>

namespace tlvmsg::forms {

class JsonWriter {
public:
    explicit JsonWriter(const tlvmsg_json_options *options)
        : indent_(options != nullptr ? options->indent : 0), level_(options != nullptr ? options->level : 0) {
    }

    void value(const tlvmsg_type *type, const void *record);
    void number(const tlvmsg_type *type, uint64_t value);
    void bytes(std::span<const uint8_t> bytes); // as text when they are that
    void hex(std::span<const uint8_t> bytes);

    void open(char bracket);
    void next(); // a value follows
    void key(std::string_view name);
    void close(char bracket);

    std::string text; // so far; may be taken away at any time

private:
    void fields(const tlvmsg_type *type, const void *record);
    void array(const tlvmsg_type *type, const void *record);
    void missing_items(uint64_t count);
    void new_line();

    unsigned indent_;
    unsigned level_;
    bool empty_ = true; // nothing yet in what is open
};

// Hands out what `write` writes.
template <class Writer = JsonWriter, class Write>
bool hand_out_json(Call &call, const tlvmsg_json_options *options, char **text, size_t *length, Write write) {
    return call.hands_out("text", text).may_hand_out(length).takes("options", options).run([&] {
        Writer writer(options);
        write(writer);
        *text = text_block(writer.text, length);
    });
}

// In one line.
inline std::string json_of(const tlvmsg_type *type, const void *record) {
    JsonWriter writer(nullptr);
    writer.value(type, record);
    return std::move(writer.text);
}

} // namespace tlvmsg::forms
