#include "report_changes.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

std::string spelled(const Sources &sources, const std::optional<Span> &span) {
    return span ? sources.place(*span) : "";
}

std::string describe(const Finding &finding) {
    const std::string subject = finding.type + (finding.member.empty() ? "" : "." + finding.member);
    const std::string what = finding.was.empty()  ? "is new: " + finding.is
                             : finding.is.empty() ? "is gone: " + finding.was
                                                  : fmt::format("was {}, is {}", finding.was, finding.is);
    return fmt::format("{}: {}; {}", subject, what, finding.effect);
}

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        const bool special = c == '"' || c == '\\';
        const bool control = static_cast<unsigned char>(c) < 0x20;
        out += control ? fmt::format("\\u{:04x}", c) : fmt::format("{}{}", special ? "\\" : "", c);
    }
    return out + "\"";
}

std::string json(const std::string &text) { return text.empty() ? "null" : quoted(text); }

std::string json(const Finding &finding, const ComparedSources &sources) {
    return fmt::format(
        R"({{"id": {}, "severity": {}, "levels": [{}], "type": {}, "member": {}, "old": {}, "new": {}, )"
        R"("text": {}, "old_place": {}, "new_place": {}}})",
        quoted(finding.rule->code), quoted(finding.levels != Nothing ? "breaks" : "safe"),
        finding.levels != Nothing ? "\"" + names_of(finding.levels, "\", \"") + "\"" : "", json(finding.type),
        json(finding.member), json(finding.was), json(finding.is), json(describe(finding)),
        json(spelled(sources.before, finding.old_span)), json(spelled(sources.after, finding.new_span)));
}

} // namespace

std::vector<Finding> select(std::vector<Finding> findings, Levels levels, bool safe) {
    for (Finding &each : findings) {
        each.levels &= levels;
    }
    std::erase_if(findings, [&](const Finding &each) { return each.levels == Nothing && !safe; });
    return findings;
}

std::string render(const std::vector<Finding> &findings, const ComparedSources &sources) {
    std::string out;
    for (const Finding &each : findings) {
        const std::string old_place = spelled(sources.before, each.old_span);
        const std::string verdict = each.levels != Nothing ? "breaks" : "safe";
        out += fmt::format(
            "{}: {}[{}]{}: {}\n", each.new_span ? spelled(sources.after, each.new_span) : old_place, verdict,
            each.rule->code, each.levels != Nothing ? " " + names_of(each.levels) : "", describe(each));
        if (each.new_span && each.old_span) {
            out += fmt::format("  note: {}: it was here\n", old_place);
        }
    }
    return out;
}

std::string render_json(const std::vector<Finding> &findings, const ComparedSources &sources) {
    std::string text;
    for (const Finding &each : findings) {
        text += (text.empty() ? "\n  " : ",\n  ") + json(each, sources);
    }
    return "[" + text + (text.empty() ? "]\n" : "\n]\n");
}

std::string render(const Rule &rule) {
    return fmt::format("{}: {}\nFrom '-' to '+' breaks {}, from '-' to '=' nothing.\n", rule.code, rule.text,
                       names_of(rule.levels));
}

} // namespace tlvc
