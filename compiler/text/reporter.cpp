#include "compiler/text/reporter.h"

#include "compiler/model/attributes.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tlvc {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view bold = "\x1b[1m";
constexpr std::string_view red = "\x1b[1;31m";
constexpr std::string_view yellow = "\x1b[1;33m";
constexpr std::string_view green = "\x1b[1;32m";
constexpr std::string_view cyan = "\x1b[1;36m";
constexpr std::string_view plain = "\x1b[0m";

constexpr size_t most_shown = 50; // more than anyone reads

std::string_view word(Severity severity) { return severity == Severity::Error ? "error" : "warning"; }

struct Reporter {
    const Sources &sources;
    bool colour;

    std::string fault(const Diagnostic &fault) const {
        std::string out = fmt::format("{}: {}: {}\n", paint(bold, sources.place(fault.span)),
                                      paint(fault.severity == Severity::Error ? red : yellow,
                                            fmt::format("{}[{}]", word(fault.severity), fault.fault->code)),
                                      paint(bold, fault.message));
        out += excerpt(fault.span);
        for (const Diagnostic::Note &note : fault.notes) {
            out += fmt::format("  {} {}: {}\n", paint(cyan, "note:"), sources.place(note.span), note.text);
        }
        for (const std::string &help : fault.helps) {
            out += fmt::format("  {} {}\n", paint(cyan, "help:"), help);
        }
        return out;
    }

    std::string paint(std::string_view style, std::string_view text) const {
        return colour ? fmt::format("{}{}{}", style, text, plain) : std::string(text);
    }

    // The first line of the span, a caret under its first character and tildes under the rest of it.
    std::string excerpt(Span span) const {
        std::string text(sources.text(sources.line(span.file, span.begin)));
        // Every control character becomes one column, so that the caret stands right on any terminal.
        std::replace_if(
            text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');

        Position at = sources.position(span.file, span.begin);
        const std::string_view marked = sources.text(span);
        const size_t width = character_count(marked.substr(0, marked.find_first_of("\r\n")));
        const std::string mark = "^" + std::string(std::max<size_t>(width, 1) - 1, '~');
        return fmt::format("{:5} | {}\n{:5} | {:{}}{}\n", at.line, text, "", "", at.column - 1,
                           paint(green, mark));
    }
};

} // namespace

Json json_place(Span span, const Sources &sources) {
    const Position begin = sources.position(span.file, span.begin);
    const Position end = sources.position(span.file, span.end);
    return {{"file", sources.path(span.file)},
            {"line", begin.line},
            {"column", begin.column},
            {"end_line", end.line},
            {"end_column", end.column}};
}

std::string render(const Diagnostics &faults, const Sources &sources, bool colour) {
    const Reporter reporter{sources, colour};
    std::string out;
    size_t found = 0;
    for (const Diagnostic &fault : faults.in_file_order()) {
        out += ++found <= most_shown ? reporter.fault(fault) : "";
    }
    out += found > most_shown ? fmt::format("and {} more\n", found - most_shown) : "";
    for (const Severity severity : {Severity::Error, Severity::Warning}) {
        if (const size_t count = faults.count(severity); count != 0) {
            out += fmt::format("{} {}{}\n", count, word(severity), count == 1 ? "" : "s");
        }
    }
    return out;
}

std::string render_json(const Diagnostics &faults, const Sources &sources) {
    Json all = Json::array();
    for (const Diagnostic &fault : faults.in_file_order()) {
        Json &json = all.emplace_back(json_place(fault.span, sources));
        json["code"] = fault.fault->code;
        json["severity"] = word(fault.severity);
        json["message"] = fault.message;
        json["help"] = fault.helps.empty() ? Json() : Json(fmt::format("{}", fmt::join(fault.helps, "; ")));
        json["notes"] = Json::array();
        for (const Diagnostic::Note &note : fault.notes) {
            json["notes"].emplace_back(json_place(note.span, sources))["message"] = note.text;
        }
    }
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n"; // texts may be no UTF-8
}

std::string render(const Fault &fault) {
    std::string text = fmt::format("{}: {}\n\n{}\n", fault.code, fault.title(), fault.explanation());
    if (&fault == &fault::unknown_attribute || &fault == &fault::misplaced_attribute) {
        for (const Attribute *each : attributes) {
            text += fmt::format("\n    @{}, for {}:\n        {}\n", each->name, each->place, each->reason);
        }
    }
    return text;
}

} // namespace tlvc
