#include "forms/print/words.h"

#include "base/hex.h"
#include "base/relay.h"

#include <tlvmsg/record.h>

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>

namespace tlvmsg::forms {

namespace {

bool is_printable_byte(uint8_t byte) { return byte >= ' ' && byte <= '~'; }

// A line for each value of a walk.
class Lines {
public:
    Lines(Output &output, std::string_view whole) : output_(output), whole_(whole) {}

    static bool enter(void *context, const tlvmsg_place *place, size_t count) {
        const tlvmsg_kind kind = place->type->kind;
        const bool array = kind != TLVMSG_STRUCTURE && kind != TLVMSG_MESSAGE && kind != TLVMSG_UNION;
        return !array || count > 0 || add(context, place, [] { return "[]"; });
    }
    static void number(void *context, const tlvmsg_place *place, uint64_t value) {
        add(context, place, [&] { return number_text(place->type, value); });
    }
    static void bytes(void *context, const tlvmsg_place *place, const uint8_t *first, size_t size) {
        add(context, place, [&] { return bytes_text({first, size}); });
    }

    base::Relay relay;

private:
    template <class Value>
    static bool add(void *context, const tlvmsg_place *place, Value value) {
        auto &lines = *static_cast<Lines *>(context);
        return lines.relay.run(
            [&] { lines.output_.write(fmt::format("{} = {}\n", path_of(*place, lines.whole_), value())); });
    }

    Output &output_;
    std::string_view whole_;
};

} // namespace

std::string path_of(const tlvmsg_place &place, std::string_view whole) {
    std::string path(TLVMSG_MAX_PATH, '\0');
    path.resize(std::min(tlvmsg_place_path(&place, path.data(), path.size()), path.size() - 1));
    const tlvmsg_place *root = &place;
    while (root->parent != nullptr) {
        root = root->parent;
    }
    if (whole.empty() && &place == root) {
        return path;
    }
    path.replace(0, std::string_view(root->name).size(), whole);
    path.erase(0, path.starts_with('.') ? 1 : 0);
    return path;
}

std::string number_text(const tlvmsg_type *type, uint64_t value) {
    if (const tlvmsg_enumerator *named = tlvmsg_enumerator_by_value(type, value)) {
        return fmt::format("{} ({})", value, named->name);
    }
    return tlvmsg_type_is_signed(type) ? fmt::format("{}", static_cast<int64_t>(value))
                                       : fmt::format("{}", value);
}

bool is_printable(std::span<const uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), is_printable_byte);
}

std::string printable(std::span<const uint8_t> bytes) {
    std::string text(bytes.begin(), bytes.end());
    std::replace_if(
        text.begin(), text.end(), [](char c) { return !is_printable_byte(static_cast<uint8_t>(c)); }, '.');
    return text;
}

std::string bytes_text(std::span<const uint8_t> bytes) {
    if (!is_printable(bytes)) {
        return fmt::format("hex({})", base::hex_pairs(bytes));
    }
    std::string text = "\"";
    for (const uint8_t byte : bytes) {
        text += byte == '"' || byte == '\\' ? "\\" : "";
        text += static_cast<char>(byte);
    }
    return text + '"';
}

void write_text(Output &output, const tlvmsg_type *type, const void *record, std::string_view whole) {
    Lines lines(output, whole);
    const tlvmsg_visitor visitor{Lines::enter, nullptr, Lines::number, Lines::bytes, {}};
    tlvmsg_walk(type, record, &visitor, &lines);
    lines.relay.throw_on();
}

} // namespace tlvmsg::forms

bool tlvmsg_to_text(const tlvmsg_type *type, const void *record, const tlvmsg_text_options *options,
                    tlvmsg_sink sink, void *context, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    call.needs("type", type).needs("record", record).takes("options", options);
    return tell(call, sink, context,
                [&](Output &output) { write_text(output, type, record, whole_of(options)); });
}
