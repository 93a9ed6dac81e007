// Messages without a type as JSON and as lines.
#include "forms.h"
#include "raw.h"
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

// Piece by piece, so that nothing but the text grows with the message.
class JsonPrinter {
public:
    JsonPrinter(Bytes bytes, unsigned indent) : bytes_(bytes), indent_(indent) {}

    // `level` is how deep in the text it stands.
    void list(const std::vector<RawElement> &elements, unsigned level) {
        text_ += '[';
        for (const RawElement &raw : elements) {
            text_ += &raw == elements.data() ? "" : ",";
            new_line(level + 1);
            object(raw.name(), level + 1, [&] { value(raw, level + 2); });
        }
        if (!elements.empty()) {
            new_line(level);
        }
        text_ += ']';
    }

    const std::string &text() const { return text_; }

private:
    void value(const RawElement &raw, unsigned level) {
        switch (raw.kind) {
        case RawKind::typed:
            text_ += to_json(raw.type, record_of(bytes_, raw).data(), indent_, level);
            break;
        case RawKind::number:
            text_ += number_text(raw.type, raw_number(bytes_, raw));
            break;
        case RawKind::elements:
        case RawKind::array:
            list(raw.inside, level);
            break;
        case RawKind::bytes:
            bytes(raw_bytes(bytes_, raw), level);
            break;
        case RawKind::opaque:
            hex(raw.element.inside(bytes_), level);
        }
    }

    void bytes(Bytes bytes, unsigned level) {
        if (is_printable(bytes)) {
            text_ += bytes_text(bytes);
        } else {
            hex(bytes, level);
        }
    }

    void hex(Bytes bytes, unsigned level) {
        object("hex", level, [&] { text_ += fmt::format("\"{:02x}\"", fmt::join(bytes, "")); });
    }

    // Of one member.
    template <class Value>
    void object(std::string_view name, unsigned level, Value value) {
        text_ += '{';
        new_line(level + 1);
        text_ += fmt::format("\"{}\":{}", name, indent_ > 0 ? " " : "");
        value();
        new_line(level);
        text_ += '}';
    }

    void new_line(unsigned level) {
        if (indent_ > 0) {
            text_ += '\n';
            text_.append(size_t{indent_} * level, ' ');
        }
    }

    Bytes bytes_;
    unsigned indent_;
    std::string text_;
};

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

std::string raw_json(Bytes bytes, const RawMessage &message, unsigned indent) {
    JsonPrinter printer(bytes, indent);
    printer.list(message.elements, 0);
    return printer.text();
}

std::string raw_text(Bytes bytes, const RawMessage &message) {
    std::string text;
    for (const RawElement &raw : message.elements) {
        add_text(bytes, "", raw, text);
    }
    return text;
}

} // namespace tlvmsg::tool
