#include "terminal.h"

#include "failure.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace tlvmsg::tool {

namespace {

[[noreturn]] void output_failed() {
    if (errno == EPIPE) {
        throw ReaderGone();
    }
    throw Failure(exit_io, fmt::format("standard output: {}", std::strerror(errno)));
}

const char *code_of(Colour colour) {
    switch (colour) {
    case Colour::dim:
        return "2";
    case Colour::red:
        return "1;31";
    case Colour::yellow:
        return "33";
    case Colour::bold:
        return "1";
    }
    return "0";
}

bool set(const char *variable) {
    const char *const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<uint8_t>(c);
        result += byte >= ' ' && byte <= '~' ? std::string(1, c) : fmt::format("\\x{:02X}", byte);
    }
    return result;
}

} // namespace

std::string shown(std::string_view text) {
    constexpr size_t head = 600;
    constexpr size_t tail = 200; // what to do about it stands at the end
    if (text.size() <= head + tail) {
        return escaped(text);
    }
    return escaped(text.substr(0, head)) + "..." + escaped(text.substr(text.size() - tail));
}

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
        output_failed();
    }
}

void print_json(const nlohmann::ordered_json &value) {
    print(value.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
}

void finish_output() {
    if (std::fflush(stdout) != 0) {
        output_failed();
    }
}

void complain(std::string_view before, Colour colour, std::string_view label, std::string_view after) {
    const std::string painted = label.empty() ? "" : Paint(STDERR_FILENO)(colour, shown(label));
    // Nobody is left to be told when this fails.
    std::fputs((shown(before) + painted + shown(after) + "\n").c_str(), stderr);
}

Paint::Paint(int descriptor)
    : coloured_(colour_when == ColourWhen::always ||
                (colour_when == ColourWhen::automatic && isatty(descriptor) != 0 && !set("NO_COLOR"))) {}

std::string Paint::operator()(Colour colour, std::string_view text) const {
    return coloured_ ? fmt::format("\033[{}m{}\033[0m", code_of(colour), text) : std::string(text);
}

Progress::Progress(std::string what, std::optional<uint64_t> total)
    : what_(std::move(what)), total_(total),
      wanted_(isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0),
      next_(Clock::now() + std::chrono::seconds(2)) {}

Progress::~Progress() {
    if (shown_) {
        std::fputs("\r\033[K", stderr);
    }
}

bool Progress::due() const { return wanted_ && Clock::now() >= next_; }

void Progress::show(uint64_t count, uint64_t done) {
    const std::string part =
        total_ && *total_ > 0 ? fmt::format(", {} %", done * 100 / *total_) : std::string();
    std::fputs(fmt::format("\r\033[Ktlv: {} {}{}", count, what_, part).c_str(), stderr);
    std::fflush(stderr);
    shown_ = true;
    next_ = Clock::now() + std::chrono::milliseconds(200);
}

} // namespace tlvmsg::tool
