#include "terminal.h"

#include "failure.h"

#include <fmt/format.h>

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

} // namespace

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
        output_failed();
    }
}

void finish_output() {
    if (std::fflush(stdout) != 0) {
        output_failed();
    }
}

void complain(std::string_view line) {
    // Nobody is left to be told when this fails.
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fputc('\n', stderr);
}

Paint::Paint(int descriptor) : coloured_(isatty(descriptor) != 0 && !set("NO_COLOR")) {}

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
