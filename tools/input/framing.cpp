#include "framing.h"

#include "tools/cli/failure.h"

#include <fmt/format.h>

#include <charconv>
#include <string_view>
#include <utility>

namespace tlvmsg::tool {

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

void Framer::add(const FrameFacts &facts, Bytes bytes, const std::string &cut) {
    facts_ = facts;
    cut_ = cut;
    fresh_ = true;
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<ptrdiff_t>(std::exchange(at_, 0)));
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

std::optional<Payload> Framer::next() {
    if (!framing_.by_length() && !std::exchange(fresh_, false)) {
        return std::nullopt;
    }
    if (left() >= framing_.header) {
        const size_t there = left() - framing_.header;
        const size_t size = framing_.by_length() ? message_length() : there + (cut_.empty() ? 0 : 1);
        if (framing_.by_length() && size > largest_message) {
            return pass_over(ToolCode::segment, fmt::format("a message of {} bytes, where {} are allowed",
                                                            size, largest_message));
        }
        if (size <= there) {
            at_ += framing_.header;
            return take(size);
        }
    }
    if (!cut_.empty()) {
        return pass_over(ToolCode::cut, std::exchange(cut_, ""));
    }
    return framing_.by_length() ? std::nullopt : std::optional(incomplete());
}

std::optional<Payload> Framer::rest() { return left() == 0 ? std::nullopt : std::optional(incomplete()); }

Payload Framer::incomplete() {
    const bool begun = left() >= framing_.header;
    return pass_over(ToolCode::segment,
                     begun ? fmt::format("{} of {} bytes", left() - framing_.header, message_length())
                           : fmt::format("{} of {} bytes before a message", left(), framing_.header));
}

uint32_t Framer::message_length() const {
    uint32_t length = 0;
    for (size_t i = 0; i < framing_.length_bytes; ++i) {
        length = length << 8 | bytes_[at_ + framing_.length_at + i];
    }
    return length;
}

Payload Framer::take(size_t size) {
    const auto begin = bytes_.begin() + static_cast<ptrdiff_t>(at_);
    at_ += size;
    return {facts_, {begin, begin + static_cast<ptrdiff_t>(size)}, {}};
}

Payload Framer::pass_over(ToolCode code, std::string text) {
    Payload payload = take(left());
    payload.problem = {code, std::move(text)};
    return payload;
}

} // namespace tlvmsg::tool
