#include "compiler/lsp/messages.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <optional>
#include <poll.h>
#include <unistd.h>

namespace tlvc::lsp {

namespace {

constexpr size_t longest_message = 16 << 20;
constexpr size_t longest_header_line = 4096;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string_view without_blanks(std::string_view text) {
    const size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    const size_t end = text.find_last_not_of(" \t\r") + 1;
    return text.substr(begin, std::max(begin, end) - begin);
}

// Nothing if the line says something else, or no number.
std::optional<size_t> length_in(std::string_view line) {
    constexpr std::string_view name = "content-length:"; // in whatever case
    const bool named = line.size() >= name.size() && std::equal(name.begin(), name.end(), line.begin(),
                                                                [](char a, char b) { return a == lower(b); });
    if (!named) {
        return {};
    }
    const std::string_view value = without_blanks(line.substr(name.size()));
    size_t length = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), length);
    return error == std::errc() && end == value.data() + value.size() ? std::optional(length) : std::nullopt;
}

} // namespace

bool Messages::arrive_within(std::chrono::milliseconds time) const {
    pollfd input{descriptor_, POLLIN, 0};
    return used_ < buffer_.size() || ended_ || poll(&input, 1, static_cast<int>(time.count())) != 0;
}

bool Messages::at_end() { return used_ == buffer_.size() && !fill(); }

// More bytes, behind those that are there already have been used. False at the end.
bool Messages::fill() {
    constexpr size_t most = 1 << 16;
    buffer_.resize(most);
    used_ = 0;
    ssize_t count = -1;
    do {
        count = ended_ ? 0 : ::read(descriptor_, buffer_.data(), most);
    } while (count < 0 && errno == EINTR);
    ended_ = count <= 0;
    buffer_.resize(ended_ ? 0 : static_cast<size_t>(count));
    return !ended_;
}

// The line has no end, and is cut where it is longer than any header.
std::string Messages::read_line() {
    std::string line;
    while (!at_end()) {
        const char c = buffer_[used_++];
        if (c == '\n') {
            break;
        }
        if (line.size() < longest_header_line) {
            line += c;
        }
    }
    return line;
}

// Fewer at the end.
std::string Messages::read_bytes(size_t count) {
    std::string bytes;
    while (bytes.size() < count && !at_end()) {
        const size_t part = std::min(count - bytes.size(), buffer_.size() - used_);
        bytes.append(buffer_, used_, part);
        used_ += part;
    }
    return bytes;
}

void Messages::skip(size_t count) {
    while (count > 0 && !at_end()) {
        const size_t part = std::min(count, buffer_.size() - used_);
        used_ += part;
        count -= part;
    }
}

// The length that it says. Throws a Refusal if it says none.
size_t Messages::read_header() {
    std::optional<size_t> length;
    for (std::string line = read_line(); !line.empty() && line != "\r"; line = read_line()) {
        if (const auto said = length_in(line)) {
            length = said;
        }
    }
    if (!length) {
        throw Refusal(not_json, "a header without the number of bytes behind Content-Length:");
    }
    return *length;
}

JsonValue Messages::read() {
    const size_t length = read_header();
    if (length > longest_message) {
        skip(length);
        throw Refusal(invalid_request,
                      fmt::format("a message of {} bytes; at most {} are read", length, longest_message));
    }
    JsonValue message = JsonValue::parse(read_bytes(length), nullptr, false);
    if (message.is_discarded()) {
        throw Refusal(not_json, fmt::format("the {} bytes are not JSON", length));
    }
    return message;
}

} // namespace tlvc::lsp
