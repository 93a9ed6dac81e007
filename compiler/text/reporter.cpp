#include "compiler/text/reporter.h"

#include "base/colour.h"
#include "base/json.h"
#include "base/visible.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tlvc {

namespace {

using JsonValue = nlohmann::ordered_json;
using tlvmsg::base::Colour;
using tlvmsg::base::visible;
using tlvmsg::base::visible_head;

constexpr size_t most_shown = 50; // more than anyone reads
constexpr size_t most_notes = 20; // to one fault

// Characters of a line, before the caret and from there on.
constexpr size_t most_before = 100;
constexpr size_t most_behind = 160;

std::string_view word(Severity severity) { return severity == Severity::Error ? "error" : "warning"; }

// What GitHub's runners would take for the end of a command's message, or of one of its properties, as they want it.
constexpr std::string_view in_message = "%\r\n";
constexpr std::string_view in_property = "%\r\n:,";

std::string escaped(std::string_view text, std::string_view special) {
    std::string result;
    for (const char c : text) {
        result += special.find(c) == special.npos ? std::string(1, c)
                                                  : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return result;
}

struct Reporter {
    const Sources &sources;
    bool colour;

    std::string fault(const Diagnostic &fault) const {
        std::string out = fmt::format("{}: {}: {}\n", paint(Colour::bold, place(fault.span)),
                                      paint(fault.severity == Severity::Error ? Colour::red : Colour::yellow,
                                            fmt::format("{}[{}]", word(fault.severity), fault.fault->code)),
                                      paint(Colour::bold, visible_head(fault.message)));
        out += excerpt(fault.span);
        for (size_t i = 0; i < std::min(fault.notes.size(), most_notes); ++i) {
            const Diagnostic::Note &note = fault.notes[i];
            out += fmt::format("  {} {}: {}\n", paint(Colour::cyan, "note:"), place(note.span),
                               visible_head(note.text));
        }
        if (fault.notes.size() > most_notes) {
            out += fmt::format("  {} and {} more\n", paint(Colour::cyan, "note:"),
                               fault.notes.size() - most_notes);
        }
        for (const std::string &help : fault.helps) {
            out += fmt::format("  {} {}\n", paint(Colour::cyan, "help:"), visible_head(help));
        }
        return out;
    }

    std::string place(Span span) const { return visible(sources.place(span)); }

    std::string paint(Colour style, std::string_view text) const {
        return colour ? tlvmsg::base::painted(style, text) : std::string(text);
    }

    // The first line of the span, a caret under its first character and tildes under the rest of it; of a long line
    // what is near.
    std::string excerpt(Span span) const {
        const Position at = sources.position(span.file, span.begin);
        const size_t left_out = at.column - 1 - std::min<size_t>(at.column - 1, most_before);
        const size_t columns_before = at.column - 1 - left_out;

        std::string_view line = sources.text(sources.line(span.file, span.begin));
        line.remove_prefix(characters(line, left_out).size());
        const std::string_view before = characters(line, columns_before);
        const std::string_view rest = line.substr(before.size());
        const std::string_view behind = characters(rest, most_behind);
        const std::string head = (left_out != 0 ? "..." : "") + in_columns(before);
        const std::string tail = in_columns(behind) + (behind.size() < rest.size() ? "..." : "");

        const std::string_view marked = characters(sources.text(span), most_behind);
        const size_t width = character_count(in_columns(marked.substr(0, marked.find_first_of("\r\n"))));
        const std::string mark = "^" + std::string(std::max<size_t>(width, 1) - 1, '~');
        const size_t indent = character_count(head) + columns_before - character_count(before);
        return fmt::format("{:5} | {}{}\n{:5} | {:{}}{}\n", at.line, head, tail, "", "", indent,
                           paint(Colour::green, mark));
    }

    // One column for each character, so that the caret stands right on any terminal.
    static std::string in_columns(std::string_view text) {
        std::string blank(text);
        std::replace(blank.begin(), blank.end(), '\t', ' ');
        return visible(blank);
    }
};

} // namespace

JsonValue json_place(Span span, const Sources &sources) {
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
    size_t shown = 0;
    for (const Diagnostic &fault : faults.in_file_order()) {
        out += ++shown <= most_shown ? reporter.fault(fault) : "";
    }
    const size_t found = faults.count(Severity::Error) + faults.count(Severity::Warning);
    out += found > most_shown ? fmt::format("and {} more\n", found - most_shown) : "";
    for (const Severity severity : {Severity::Error, Severity::Warning}) {
        if (const size_t count = faults.count(severity); count != 0) {
            out += fmt::format("{} {}{}\n", count, word(severity), count == 1 ? "" : "s");
        }
    }
    return out;
}

std::string render_json(const Diagnostics &faults, const Sources &sources) {
    JsonValue all = JsonValue::array();
    for (const Diagnostic &fault : faults.in_file_order()) {
        JsonValue &json = all.emplace_back(json_place(fault.span, sources));
        json["code"] = fault.fault->code;
        json["severity"] = word(fault.severity);
        json["message"] = fault.message;
        json["help"] =
            fault.helps.empty() ? JsonValue() : JsonValue(fmt::format("{}", fmt::join(fault.helps, "; ")));
        json["notes"] = JsonValue::array();
        for (const Diagnostic::Note &note : fault.notes) {
            json["notes"].emplace_back(json_place(note.span, sources))["message"] = note.text;
        }
        json["corrections"] = JsonValue::array();
        for (const Correction &part : fault.corrections) {
            json["corrections"].emplace_back(json_place(part.span, sources))["replacement"] =
                part.replacement;
        }
    }
    return tlvmsg::base::json_text(all, 2) + "\n";
}

std::string github_line(std::string_view level, Span span, const Sources &sources, std::string_view title,
                        std::string_view message) {
    const Position at = sources.position(span.file, span.begin);
    return fmt::format("::{} file={},line={},col={},title={}::{}\n", level,
                       escaped(visible(sources.path(span.file)), in_property), at.line, at.column,
                       escaped(title, in_property), escaped(message, in_message));
}

std::string render_github(const Diagnostics &faults, const Sources &sources) {
    std::string out;
    for (const Diagnostic &fault : faults.in_file_order()) {
        std::string message = visible_head(fault.message);
        for (const Diagnostic::Note &note : fault.notes) {
            message +=
                fmt::format("\nnote: {}: {}", visible(sources.place(note.span)), visible_head(note.text));
        }
        for (const std::string &help : fault.helps) {
            message += "\nhelp: " + visible_head(help);
        }
        out += github_line(word(fault.severity), fault.span, sources,
                           fmt::format("{} {}", fault.fault->code, fault.fault->title), message);
    }
    return out;
}

std::string render(const Fault &fault) {
    return fmt::format("{}: {}\n\n{}\n", fault.code, fault.title, fault.explanation);
}

} // namespace tlvc
