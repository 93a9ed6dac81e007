#include "terminal.h"

#include "failure.h"

#include "base/visible.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace tlvmsg::cli {

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

std::string wrapped(std::string_view text, size_t columns) {
    std::string result;
    size_t column = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const bool fits = column + 1 + word.size() <= columns;
        result += column == 0 ? "" : fits ? " " : "\n";
        column = column != 0 && fits ? column + 1 + word.size() : word.size();
        result += word;
    }
    return result;
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
    const std::string painted = label.empty() ? "" : Paint(STDERR_FILENO)(colour, base::visible_head(label));
    // Nobody is left to be told when this fails.
    std::fputs((base::visible_head(before) + painted + base::visible_head(after) + "\n").c_str(), stderr);
}

Paint::Paint(int descriptor)
    : coloured_(colour_when == ColourWhen::always ||
                (colour_when == ColourWhen::automatic && isatty(descriptor) != 0 && !set("NO_COLOR"))) {}

std::string Paint::operator()(Colour colour, std::string_view text) const {
    return coloured_ ? fmt::format("\033[{}m{}\033[0m", code_of(colour), text) : std::string(text);
}

} // namespace tlvmsg::cli
