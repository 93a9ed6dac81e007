#include "framing.h"

#include "cli/failure.h"

#include <fmt/format.h>

#include <charconv>
#include <string_view>
#include <utility>

namespace tlvmsg::tool {

using namespace cli;

Framing parse_framing(const std::string &text) {
    Framing framing;
    std::string_view rest(text);
    const auto number = [&rest](std::string_view before, size_t &value) {
        if (!rest.starts_with(before)) {
            return false;
        }
        rest.remove_prefix(before.size());
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
        rest.remove_prefix(static_cast<size_t>(end - rest.data()));
        return error == std::errc() && value < 100000;
    };
    bool known = text == "segment" || number("skip:", framing.header);
    if (!known && number("length:", framing.length_bytes) && number("@", framing.length_at)) {
        const size_t end = framing.length_at + framing.length_bytes;
        framing.header = end;
        known = rest.empty() || number("+", framing.header);
        known =
            known && (framing.length_bytes == 1 || framing.length_bytes == 2 || framing.length_bytes == 4);
        if (known && framing.header < end) {
            throw Failure(
                exit_usage,
                fmt::format("framing '{}': a header of {} bytes holds no length that ends at byte {}", text,
                            framing.header, end));
        }
    }
    if (!known || (!rest.empty() && text != "segment")) {
        throw Failure(
            exit_usage,
            fmt::format("framing '{:.40}': allowed are segment, skip:N and length:BYTES@OFFSET[+HEADER], "
                        "BYTES being 1, 2 or 4, the others below 100000",
                        text));
    }
    return framing;
}

void Framer::add(const FrameFacts &facts, Bytes bytes, const std::string &cut, Payloads &out) {
    facts_ = facts;
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    if (framing_.by_length()) {
        take_by_length(out);
    } else if (cut.empty() && bytes_.size() >= framing_.header) {
        bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<ptrdiff_t>(framing_.header));
        out.push_back({facts_, std::exchange(bytes_, {}), {}});
        return;
    }
    if (!cut.empty()) {
        pass_over(ToolCode::cut, cut, out);
    } else if (!framing_.by_length()) {
        pass_over(ToolCode::segment, incomplete(), out);
    }
}

void Framer::take_by_length(Payloads &out) {
    Bytes rest = bytes_;
    while (begins(rest) && message_length(rest) <= rest.size() - framing_.header) {
        const Bytes message = rest.subspan(framing_.header, message_length(rest));
        out.push_back({facts_, {message.begin(), message.end()}, {}});
        rest = rest.subspan(framing_.header + message.size());
    }
    bytes_.erase(bytes_.begin(), bytes_.end() - static_cast<ptrdiff_t>(rest.size()));
    if (begins(bytes_) && message_length(bytes_) > largest_message) {
        pass_over(ToolCode::segment,
                  fmt::format("a message of {} bytes, where {} are allowed", message_length(bytes_),
                              largest_message),
                  out);
    }
}

void Framer::finish(Payloads &out) {
    if (!bytes_.empty()) {
        pass_over(ToolCode::segment, incomplete(), out);
    }
}

size_t Framer::message_length(Bytes bytes) const {
    size_t length = 0;
    for (const uint8_t byte : bytes.subspan(framing_.length_at, framing_.length_bytes)) {
        length = length << 8 | byte;
    }
    return length;
}

std::string Framer::incomplete() const {
    return begins(bytes_)
               ? fmt::format("{} of {} bytes", bytes_.size() - framing_.header, message_length(bytes_))
               : fmt::format("{} of {} bytes before a message", bytes_.size(), framing_.header);
}

void Framer::pass_over(ToolCode code, std::string text, Payloads &out) {
    out.push_back({facts_, std::exchange(bytes_, {}), Problem{code, std::move(text)}});
}

} // namespace tlvmsg::tool
