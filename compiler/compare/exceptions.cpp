#include "compiler/compare/exceptions.h"

#include "base/visible.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

using tlvmsg::base::visible;

constexpr std::string_view blanks = " \t\r";

// The first word, which is taken from the text with the blanks around it.
std::string_view take_word(std::string_view &text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(word.size());
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return word;
}

bool is_rule(std::string_view code) {
    return std::ranges::any_of(rules, [code](const Rule *each) { return each->code == code; });
}

} // namespace

Exceptions::Exceptions(const Sources &sources, uint32_t file) {
    const std::string_view text = sources.text(file);
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        std::string_view rest = text.substr(begin, end - begin);
        const Span span{file, static_cast<uint32_t>(begin), static_cast<uint32_t>(end)};
        begin = end + 1;
        const std::string_view code = take_word(rest);
        if (code.empty() || code.starts_with('#')) {
            continue;
        }
        const std::string_view name = take_word(rest);
        lines_.push_back({span, code, name,
                          !is_rule(code) ? fmt::format("no rule is called '{}'", visible(code))
                          : name.empty() ? "it names no type, or member as TYPE.MEMBER"
                          : rest.empty() ? "it gives no reason"
                                         : ""});
    }
}

void Exceptions::apply(std::vector<Finding> &findings) {
    std::erase_if(findings, [this](const Finding &finding) {
        bool excepted = false;
        for (Line &each : lines_) {
            const bool applies = each.why_none.empty() && finding.levels != Nothing &&
                                 each.code == finding.rule->code && each.name == name_of(finding);
            each.applies |= applies;
            excepted |= applies;
        }
        return excepted;
    });
}

std::vector<Finding> Exceptions::at_fault() const {
    std::vector<Finding> found;
    for (const Line &each : lines_) {
        if (!each.applies) {
            Finding &finding = found.emplace_back();
            finding.rule = &exception_idle;
            finding.effect = each.why_none.empty()
                                 ? fmt::format("nothing breaks {} at '{}'", each.code, visible(each.name))
                                 : each.why_none;
            finding.new_span = each.span;
        }
    }
    return found;
}

} // namespace tlvc
