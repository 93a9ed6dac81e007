// Records to JSON.
#include "block.h"
#include "fields.h"
#include "text_fault.h"

#include <algorithm>
#include <span>

namespace tlvmsg::forms {

namespace {

bool is_printable(uint8_t byte) { return byte >= ' ' && byte <= '~'; }

class JsonWriter {
public:
    explicit JsonWriter(const tlvmsg_json_options &options)
        : indent_(options.indent), level_(options.level) {}

    void value(const tlvmsg_type *type, const void *record) {
        switch (type->kind) {
        case TLVMSG_SCALAR:
        case TLVMSG_ENUMERATION:
            return number(type, record);
        case TLVMSG_STRUCTURE:
        case TLVMSG_MESSAGE:
            open('{');
            members(type, record);
            return close('}');
        case TLVMSG_UNION:
            open('{');
            key(type->selector_name);
            number(type->selector, at_offset(record, type->selector_offset));
            alternative(type, record);
            return close('}');
        default:
            return array(type, record);
        }
    }

    const std::string &text() const { return text_; }

private:
    void number(const tlvmsg_type *type, const void *field) {
        const uint64_t value = tlvmsg_load(type, field);
        if (const tlvmsg_enumerator *named = tlvmsg_enumerator_by_value(type, value)) {
            text_ += '"';
            text_ += named->name;
            text_ += '"';
        } else {
            const bool is_signed = tlvmsg_type_is_signed(type);
            text_ += is_signed ? std::to_string(static_cast<int64_t>(value)) : std::to_string(value);
        }
    }

    void members(const tlvmsg_type *type, const void *record) {
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const tlvmsg_member &member = type->members[i];
            const void *const field = at_offset(record, member.offset);
            if (*member.path == '\0') { // a union whose selector is the member before it
                alternative(member.type, field);
            } else if ((member.flags & TLVMSG_SHARED_WITH_NEXT) == 0) {
                key(member.path);
                value(member.type, field);
            }
        }
    }

    void alternative(const tlvmsg_type *type, const void *record) {
        if (const tlvmsg_alternative *chosen = tlvmsg_chosen_in(type, record)) {
            key(chosen->name);
            value(chosen->type, at_offset(record, chosen->offset));
        }
    }

    void array(const tlvmsg_type *type, const void *record) {
        const tlvmsg_items items = tlvmsg_items_of(type, record);
        if (items.count > 0 && items.first == nullptr) {
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

    void missing_items(uint64_t count) {
        open('{');
        key("count");
        text_ += std::to_string(count);
        key("items");
        text_ += "null";
        close('}');
    }

    void bytes(std::span<const uint8_t> bytes) {
        if (std::all_of(bytes.begin(), bytes.end(), is_printable)) {
            return quoted(bytes);
        }
        open('{');
        key("hex");
        text_ += '"';
        for (const uint8_t byte : bytes) {
            constexpr char hex[] = "0123456789abcdef";
            text_ += hex[byte / 16];
            text_ += hex[byte % 16];
        }
        text_ += '"';
        close('}');
    }

    void quoted(std::span<const uint8_t> printable) {
        text_ += '"';
        for (const uint8_t byte : printable) {
            if (byte == '"' || byte == '\\') {
                text_ += '\\';
            }
            text_ += static_cast<char>(byte);
        }
        text_ += '"';
    }

    // ---- Layout ----

    void open(char bracket) {
        text_ += bracket;
        ++level_;
        empty_ = true;
    }

    // A value follows.
    void next() {
        if (!empty_) {
            text_ += ',';
        }
        new_line();
        empty_ = false;
    }

    void key(const char *name) {
        next();
        text_ += '"';
        text_ += name;
        text_ += indent_ > 0 ? "\": " : "\":";
    }

    void close(char bracket) {
        --level_;
        if (!empty_) {
            new_line();
        }
        text_ += bracket;
        empty_ = false;
    }

    void new_line() {
        if (indent_ > 0) {
            text_ += '\n';
            text_.append(size_t{indent_} * level_, ' ');
        }
    }

    unsigned indent_;
    unsigned level_;
    bool empty_ = true; // nothing yet in what is open
    std::string text_;
};

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_to_json(const tlvmsg_type *type, const void *record, const tlvmsg_json_options *options,
                    char **text, size_t *length, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    if (text != nullptr) {
        *text = nullptr;
    }
    if (length != nullptr) {
        *length = 0;
    }
    if (type == nullptr || record == nullptr || text == nullptr) {
        give_null_argument(fault, type == nullptr ? "type" : record == nullptr ? "record" : "text");
        return false;
    }
    return guarded(fault, "", [&] {
        JsonWriter writer(options != nullptr ? *options : tlvmsg_json_options{});
        writer.value(type, record);
        *text = text_block(writer.text(), length);
    });
}
