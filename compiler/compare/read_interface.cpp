#include "compiler/compare/read_interface.h"

#include "compiler/emit/emit.h"
#include "compiler/language/parser.h"

#include <algorithm>

namespace tlvc {

namespace {

// A part of a type in schema language: a field without its offset, with the last name of its path or, for a union
// that has none, any name. Nothing for what the heading says already: arrays' fields and unions' selectors.
std::string as_member(const std::string &heading, std::string line) {
    if (heading.starts_with("array ") || heading.starts_with("bytes ") || heading.starts_with("dynamic ") ||
        (heading.starts_with("union ") && line.find(':') == line.npos)) {
        return "";
    }
    if (!heading.starts_with("enum ")) {
        const size_t end = std::min(line.find(' ', line.find_first_not_of(' ')), line.size());
        line.replace(0, end, character_count(line.substr(0, end)), ' ');
        const size_t type = std::min(line.find_first_not_of(' '), line.size());
        line += line.find(' ', type) == line.npos ? " " + line.substr(type) : "";
    }
    if (const size_t dot = line.find('.'); dot != line.npos) {
        const size_t path = line.rfind(' ', dot);
        line.replace(path, dot + 1 - path, character_count(line.substr(path, dot + 1 - path)), ' ');
    }
    return line;
}

struct FamilyText {
    std::string name;
    std::string text; // behind as many lines as there are before it
    std::string heading;
    bool open = false; // a body

    void add(const std::string &line) {
        if (!line.starts_with(' ')) {
            close();
            heading = line.starts_with("reserved ") ? line : line.substr(0, line.find(','));
            text += heading;
        } else if (const std::string member = as_member(heading, line); !member.empty()) {
            text += open ? member : "{" + member.substr(1);
            open = true;
        }
        text += '\n';
    }
    void close() {
        if (open) {
            text.insert(text.size() - 1, " }");
            open = false;
        }
    }
};

// The lines of a text, without their ends.
std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        lines.push_back(line);
    }
    return lines;
}

// The lines that state something, and an empty one at the end.
std::vector<std::string_view> facts_of(std::string_view text) {
    std::vector<std::string_view> lines = lines_of(text);
    std::erase_if(lines, [](std::string_view line) { return line.empty() || line.front() == '#'; });
    lines.push_back(text.substr(text.size()));
    return lines;
}

// What an earlier tlvc printed has no fingerprints.
bool states_fingerprint(std::string_view fact) { return fact.find(", fingerprint ") != fact.npos; }
std::string_view as_far_as(std::string_view stated, std::string_view implied) {
    return states_fingerprint(stated) ? implied : implied.substr(0, implied.find(", fingerprint "));
}

} // namespace

Program read_interface(const std::string &path, std::string_view text, Sources &sources,
                       Diagnostics &faults) {
    std::vector<FamilyText> families(1);
    size_t lines = 0;
    for (const std::string_view each : lines_of(text)) {
        const std::string line(each);
        ++lines;
        if (line.starts_with("family ")) {
            families.back().close();
            families.push_back({line.substr(line.find(' ') + 1), std::string(lines, '\n'), "", false});
        } else {
            families.back().add(line.starts_with('#') ? "" : line);
        }
    }
    families.back().close();
    std::erase_if(families,
                  [](const FamilyText &each) { return each.text.find_first_not_of('\n') == each.text.npos; });
    Program program;
    const auto whole = static_cast<uint32_t>(families.size());
    for (uint32_t file = 0; file < whole; ++file) {
        sources.add(path, std::move(families[file].text), whole);
        program.units.push_back({parse(sources, file, faults), path, families[file].name, {}});
        for (uint32_t other = 0; other < whole; ++other) {
            program.units.back().imports.push_back(other);
        }
    }
    sources.add(path, std::string(text));
    return program;
}

void check_interface(const Schema &schema, const Sources &sources, Diagnostics &faults) {
    const uint32_t file = sources.size() - 1;
    const std::string_view text = sources.text(file);
    const std::string written = schema.families.empty() ? "family, then types" : emit_interface(schema);
    const std::vector<std::string_view> stated = facts_of(text);
    const std::vector<std::string_view> implied = facts_of(written);
    const auto [found, expected] =
        std::ranges::mismatch(stated, implied, [](std::string_view fact, std::string_view other) {
            return fact == as_far_as(fact, other);
        });
    if (found != stated.end()) {
        const auto begin = static_cast<uint32_t>(found->data() - text.data());
        const Span span{file, begin, begin + static_cast<uint32_t>(found->size())};
        faults.report(fault::interface_changed, span, as_far_as(*found, *expected));
    }
}

} // namespace tlvc
