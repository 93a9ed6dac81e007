// What form a text has, and the messages in it.
#include "forms/border/block.h"
#include "forms/border/call.h"
#include "forms/border/input.h"
#include "forms/hex/hex_text.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

HexMessages find_hex(std::string_view text, const tlvmsg_hex_options &options) {
    const Sense sense(options);
    HexMessages messages = read_annotated(text);
    messages = messages.empty() ? read_dumps(text, sense, options.holes) : std::move(messages);
    messages = messages.empty() ? read_lines(text, sense) : std::move(messages);
    if (const size_t comment = text.find_first_not_of(" \t\f\n"); messages.empty() && comment < text.size()) {
        fail(text.substr(comment, text.find('\n', comment) - comment), " is a comment, as all lines are");
    }
    return messages.empty() ? HexMessages{{1, {}}} : std::move(messages);
}

// Messages alone, or the line that is in the way.
void keep_messages(std::string_view text, HexMessages &messages) {
    const auto choice = std::find_if(messages.begin(), messages.end(), [](const HexMessage &each) {
        return each.kind == TLVMSG_HEX_CANDIDATE;
    });
    if (choice != messages.end()) {
        TextLines lines(text);
        TextLine line{};
        while (lines.next(line) && line.number < choice->line) {
        }
        fail(line.text, " has several runs that may be the message");
    }
    std::erase_if(messages, [](const HexMessage &each) { return each.kind == TLVMSG_HEX_NONE; });
}

// The messages, and behind them their bytes and names.
tlvmsg_hex_message *new_messages(const HexMessages &messages) {
    size_t size = messages.size() * sizeof(tlvmsg_hex_message);
    for (const HexMessage &each : messages) {
        size += each.bytes.size() + each.type.size() + 1;
    }
    auto *const block = static_cast<tlvmsg_hex_message *>(new_block(size));
    auto *next = reinterpret_cast<uint8_t *>(block + messages.size());
    for (size_t i = 0; i < messages.size(); ++i) {
        const HexMessage &each = messages[i];
        uint8_t *const type = std::copy(each.bytes.begin(), each.bytes.end(), next);
        block[i] = {next, each.bytes.size(), reinterpret_cast<const char *>(type), each.line, each.kind, {}};
        next = std::copy(each.type.begin(), each.type.end(), type) + 1; // zero as the block is
    }
    return block;
}

bool hand_out(Call &call, const char *text, size_t length, const tlvmsg_hex_options &options, bool all,
              tlvmsg_hex_message **messages, size_t *count) {
    std::string copy; // which nobody changes meanwhile
    return call.hands_out("messages", messages)
        .hands_out("count", count)
        .reads("text", text, length)
        .run(
            [&] {
                copy = normalized(text_at(text, length));
                try {
                    HexMessages found = find_hex(copy, options);
                    if (!all) {
                        keep_messages(copy, found);
                    }
                    *messages = new_messages(found);
                    *count = found.size();
                } catch (const HexFault &fault) {
                    throw TextFault{TLVMSG_TEXT_SYNTAX, static_cast<size_t>(fault.place - copy.data()), "",
                                    fault.message};
                }
            },
            copy);
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_is_text(const char *text, size_t length) {
    const auto is_printable = [](unsigned char byte) {
        return byte >= ' '
                   ? byte != 0x7F
                   : std::string_view("\t\n\f\r\x1B").find(static_cast<char>(byte)) != std::string_view::npos;
    };
    return std::all_of(text, text + length, is_printable) || tlvmsg::forms::is_utf16({text, length});
}

bool tlvmsg_read_hex(const char *text, size_t length, tlvmsg_hex_message **messages, size_t *count,
                     tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    return hand_out(call, text, length, {}, false, messages, count);
}

bool tlvmsg_find_hex(const char *text, size_t length, const tlvmsg_hex_options *options,
                     tlvmsg_hex_message **messages, size_t *count, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    return hand_out(call.takes("options", options), text, length,
                    options != nullptr ? *options : tlvmsg_hex_options{}, true, messages, count);
}
