#include "compiler/compare/report.h"

#include "compiler/text/reporter.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tlvc {

namespace {

using nlohmann::ordered_json;

bool is_about_types(const Finding &finding) {
    return finding.rule != &file_shared && finding.rule != &exception_idle;
}

std::string message(const Finding &finding) {
    if (finding.rule == &exception_idle) {
        return "this line allows no change: " + finding.effect;
    }
    if (finding.rule == &file_shared) {
        return "this file is read for OLD and for NEW; " + finding.effect;
    }
    const std::string what = finding.was.empty()  ? "is new: " + finding.is
                             : finding.is.empty() ? "is gone: " + finding.was
                                                  : fmt::format("was {}, is {}", finding.was, finding.is);
    return fmt::format("{}{}: {}; {}", name_of(finding), finding.in_message ? "" : " (in no message)", what,
                       finding.effect);
}

std::string_view severity(const Finding &finding) {
    return finding.rule == &exception_idle ? "error"
           : finding.rule == &file_shared  ? "unknown"
           : finding.levels != Nothing     ? "breaks"
                                           : "safe";
}

ordered_json or_null(const std::string &text) { return text.empty() ? ordered_json() : ordered_json(text); }

// Where a side has what a finding is about, and what it is there; null where the side has nothing of it.
ordered_json side(const std::optional<Span> &span, const Sources &sources, const std::string &what) {
    if (!span) {
        return {};
    }
    ordered_json json = json_place(*span, sources);
    json["what"] = or_null(what);
    return json;
}

} // namespace

std::vector<Finding> select(std::vector<Finding> findings, const Selection &selection) {
    std::erase_if(findings, [&](Finding &each) {
        const bool breaks = each.levels != Nothing; // what breaks something else is not safe
        each.levels &= selection.levels;
        const bool wanted = each.levels != Nothing || (!breaks && selection.safe);
        const bool left_out = selection.only_in_messages && !each.in_message;
        return is_about_types(each) && (!wanted || left_out);
    });
    return findings;
}

std::string render(const std::vector<Finding> &findings, const ComparedSources &sources) {
    std::string out;
    for (const Finding &each : findings) {
        const std::string old_place = each.old_span ? sources.before.place(*each.old_span) : "";
        out +=
            fmt::format("{}: {}[{}]{}: {}\n", each.new_span ? sources.after.place(*each.new_span) : old_place,
                        severity(each), each.rule->code,
                        each.levels != Nothing ? " " + names_of(each.levels) : "", message(each));
        if (each.new_span && each.old_span && is_about_types(each)) {
            out += fmt::format("  note: {}: it was here\n", old_place);
        }
    }
    return out;
}

std::string render_github(const std::vector<Finding> &findings, const ComparedSources &sources) {
    std::string out;
    for (const Finding &each : findings) {
        const std::string_view level = is_refused(each)       ? "error"
                                       : is_about_types(each) ? "notice"
                                                              : "warning";
        const std::string title = fmt::format("{} {}", each.rule->code, each.rule->title);
        const std::string text =
            fmt::format("{}{}: {}", severity(each), each.levels != Nothing ? " " + names_of(each.levels) : "",
                        message(each));
        out += each.new_span ? github_line(level, *each.new_span, sources.after, title, text)
                             : github_line(level, *each.old_span, sources.before, title, text);
    }
    return out;
}

ordered_json json_of(const std::vector<Finding> &findings, const ComparedSources &sources) {
    ordered_json all = ordered_json::array();
    for (const Finding &each : findings) {
        ordered_json &json = all.emplace_back(each.new_span ? json_place(*each.new_span, sources.after)
                                                            : json_place(*each.old_span, sources.before));
        json["code"] = each.rule->code;
        json["severity"] = severity(each);
        json["message"] = message(each);
        json["levels"] = names_in(each.levels);
        json["type"] = or_null(each.type);
        json["member"] = or_null(each.member);
        json["in_message"] = is_about_types(each) ? ordered_json(each.in_message) : ordered_json();
        json["old"] = side(each.old_span, sources.before, each.was);
        json["new"] = side(each.new_span, sources.after, each.is);
    }
    return all;
}

std::string render(const Rule &rule) {
    std::string text = fmt::format("{}: {}: {}\n{}\n", rule.code, rule.title, rule.effect, rule.explanation);
    const auto &[before, after, harmless] = rule.example;
    if (before.empty()) {
        return text;
    }
    return text + fmt::format("- {}\n+ {}\n= {}\nFrom '-' to '+' breaks {}, from '-' to '=' nothing.\n",
                              before, after, harmless, names_of(rule.levels));
}

} // namespace tlvc
