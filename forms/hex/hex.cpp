// Every spelling in turn, until one is that of the text.
#include "forms/border/block.h"
#include "forms/border/call.h"
#include "forms/border/input.h"
#include "forms/hex/hex_text.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace tlvmsg::forms {

namespace {

class Attempts {
public:
    bool read(std::string_view text, const std::function<HexMessages(std::string_view)> &reader) {
        try {
            messages = reader(text);
        } catch (const HexFault &found) {
            const auto offset = static_cast<size_t>(found.place - text.data());
            if (faults++ == 0 || offset > fault.offset) {
                fault = {TLVMSG_TEXT_SYNTAX, offset, "", found.message};
            }
        }
        return !messages.empty();
    }

    bool read_dumps(std::string_view text, bool log) {
        return std::any_of(std::begin(bases), std::end(bases), [&](int base) {
            return read(text, [&](std::string_view whole) { return forms::read_dumps(whole, base, log); });
        });
    }

    HexMessages messages;
    TextFault fault{TLVMSG_TEXT_SYNTAX, 0, "", ""}; // of the spelling that got furthest
    size_t faults = 0;

private:
    static constexpr int bases[] = {16, 8, 10};
};

HexMessages read_hex(std::string_view text) {
    Attempts attempts;
    if (attempts.read_dumps(text, false) || attempts.read(text, read_annotated) ||
        attempts.read(text, read_c_arrays)) {
        return std::move(attempts.messages);
    }
    const std::string said = without_log_words(text);
    const size_t faults = attempts.faults;
    bool read = attempts.read_dumps(said, true);
    // Otherwise the offsets of a broken dump would be read as bytes.
    const bool plain = attempts.faults == faults && said.find_first_not_of(" \n") != said.npos;
    read = read || attempts.read(text, read_plain) || attempts.read(text, read_python_bytes) ||
           attempts.read(said, read_python_lists) || (plain && attempts.read(said, read_plain)) ||
           attempts.read(said, read_base64);
    if (!read) {
        throw TextFault(attempts.fault);
    }
    return std::move(attempts.messages);
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
        block[i] = {next, each.bytes.size(), reinterpret_cast<const char *>(type), each.line, {}};
        next = std::copy(each.type.begin(), each.type.end(), type) + 1; // zero as the block is
    }
    return block;
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_is_text(const char *text, size_t length) {
    return std::all_of(text, text + length, [](unsigned char byte) {
        return byte >= ' '
                   ? byte != 0x7F
                   : std::string_view("\t\n\f\r").find(static_cast<char>(byte)) != std::string_view::npos;
    });
}

bool tlvmsg_read_hex(const char *text, size_t length, tlvmsg_hex_message **messages, size_t *count,
                     tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    std::string_view whole = text_at(text, length);
    whole.remove_prefix(whole.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    return Call(fault)
        .hands_out("messages", messages)
        .hands_out("count", count)
        .reads("text", text, length)
        .run(
            [&] {
                const std::string copy(whole); // which nobody changes meanwhile
                const HexMessages read = read_hex(copy);
                *messages = new_messages(read);
                *count = read.size();
            },
            whole);
}
