#include "terminal.h"

#include "failure.h"

#include "base/json.h"
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

void print_json(const nlohmann::ordered_json &value) { print(base::json_text(value, 2) + "\n"); }

void finish_output() {
    if (std::fflush(stdout) != 0) {
        output_failed();
    }
}

std::string complaint(std::string_view before, Colour colour, std::string_view label,
                      std::string_view after) {
    static const Paint paint(STDERR_FILENO); // faults come by the thousand
    const std::string painted = label.empty() ? "" : paint(colour, base::visible_head(label));
    return base::visible_head(before) + painted + base::visible_head(after) + "\n";
}

void write_complaints(const std::string &lines) {
    std::fputs(lines.c_str(), stderr); // nobody is left to be told when this fails
}

void complain(std::string_view before, Colour colour, std::string_view label, std::string_view after) {
    write_complaints(complaint(before, colour, label, after));
}

Paint::Paint(int descriptor)
    : coloured_(colour_when == ColourWhen::always ||
                (colour_when == ColourWhen::automatic && isatty(descriptor) != 0 && !set("NO_COLOR"))) {}

std::string Paint::operator()(Colour colour, std::string_view text) const {
    return coloured_ ? base::painted(colour, text) : std::string(text);
}

} // namespace tlvmsg::cli
