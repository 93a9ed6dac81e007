// JSON as it is laid out here: of records, and of whatever else is put between brackets.
#pragma once

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

// In one line.
inline std::string json_of(const tlvmsg_type *type, const void *record) {
    JsonWriter writer(nullptr);
    writer.value(type, record);
    return std::move(writer.text);
}

} // namespace tlvmsg::forms
