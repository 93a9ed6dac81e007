#include "compiler/compare/report.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

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

std::string_view severity(const Finding &finding) { return finding.levels != Nothing ? "breaks" : "safe"; }

} // namespace

std::vector<Finding> select(std::vector<Finding> findings, Levels levels, bool safe) {
    std::erase_if(findings, [&](Finding &each) { // what breaks something else is not safe
        const bool breaks = each.levels != Nothing;
        each.levels &= levels;
        return each.levels == Nothing && (breaks || !safe);
    });
    return findings;
}

std::string render(const std::vector<Finding> &findings, const ComparedSources &sources) {
    std::string out;
    for (const Finding &each : findings) {
        const std::string old_place = spelled(sources.before, each.old_span);
        out += fmt::format("{}: {}[{}]{}: {}\n",
                           each.new_span ? spelled(sources.after, each.new_span) : old_place, severity(each),
                           each.rule->code, each.levels != Nothing ? " " + names_of(each.levels) : "",
                           describe(each));
        if (each.new_span && each.old_span) {
            out += fmt::format("  note: {}: it was here\n", old_place);
        }
    }
    return out;
}

std::string render_json(const std::vector<Finding> &findings, const ComparedSources &sources) {
    using Json = nlohmann::ordered_json;
    const auto or_null = [](const std::string &text) { return text.empty() ? Json() : Json(text); };
    Json all = Json::array();
    for (const Finding &each : findings) {
        all.push_back({{"id", each.rule->code},
                       {"severity", severity(each)},
                       {"levels", names_in(each.levels)},
                       {"type", each.type},
                       {"member", or_null(each.member)},
                       {"old", or_null(each.was)},
                       {"new", or_null(each.is)},
                       {"text", describe(each)},
                       {"old_place", or_null(spelled(sources.before, each.old_span))},
                       {"new_place", or_null(spelled(sources.after, each.new_span))}});
    }
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n"; // texts may be no UTF-8
}

std::string render(const Rule &rule) {
    return fmt::format("{}: {}\nFrom '-' to '+' breaks {}, from '-' to '=' nothing.\n", rule.code, rule.text,
                       names_of(rule.levels));
}

} // namespace tlvc
