#include "compiler/checks/silences.h"

#include "compiler/language/lexer.h"

#include <algorithm>
#include <map>

namespace tlvc {

namespace {

constexpr std::string_view mark = "tlvc:";
constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool is_warning(std::string_view code) {
    return std::ranges::any_of(fault::all, [code](const Fault *each) {
        return each->code == code && each->severity() == Severity::Warning && each != &fault::idle_silence;
    });
}

class Silences {
public:
    Silences(const Sources &sources, const std::vector<uint32_t> &files) : sources_(sources) {
        Diagnostics ignored;
        for (const uint32_t file : files) {
            for (const Span &comment : lex(sources, file, ignored).comments) {
                read(comment);
            }
        }
    }

    bool silence(const Diagnostic &warning) {
        const auto [begin, end] = codes_.equal_range(
            {warning.span.file, sources_.position(warning.span.file, warning.span.begin).line});
        bool silenced = false;
        for (auto each = begin; each != end; ++each) {
            const bool same = sources_.text(each->second.code) == warning.fault->code;
            each->second.used |= same;
            silenced |= same;
        }
        return silenced;
    }

    void report_idle(Diagnostics &warnings) const {
        warnings.append(malformed_);
        for (const auto &[line, each] : codes_) {
            if (!each.used) {
                const Report told =
                    warnings.report(fault::idle_silence, each.code,
                                    fmt::format("there is no {} here to silence", sources_.text(each.code)));
                if (each.alone) {
                    told.correct(with_space(each.comment), "");
                }
            }
        }
    }

private:
    struct Code {
        Span code;
        Span comment;
        bool alone; // in its remark
        bool used = false;
    };

    void read(Span comment) {
        const std::string_view text = sources_.text(comment);
        std::string_view rest = trimmed(text.substr(2));
        if (!rest.starts_with(mark)) {
            return;
        }
        rest = rest.substr(mark.size());
        std::vector<Span> codes;
        while (!(rest = rest.substr(std::min(rest.find_first_not_of(" \t,"), rest.size()))).empty()) {
            const std::string_view word = rest.substr(0, rest.find_first_of(" \t,"));
            rest.remove_prefix(word.size());
            const auto begin = comment.begin + static_cast<uint32_t>(word.data() - text.data());
            const Span span{comment.file, begin, begin + static_cast<uint32_t>(word.size())};
            if (word == "because") {
                break;
            }
            if (!is_warning(word)) {
                malformed_.report(fault::idle_silence, span,
                                  fmt::format("'{}' is no code of a warning that can be silenced", word));
                return;
            }
            codes.push_back(span);
        }
        if (codes.empty() || trimmed(rest).empty()) {
            malformed_
                .report(fault::idle_silence, comment, codes.empty() ? "it has no code" : "it has no reason")
                .help("write: // tlvc: W002 because REASON");
            return;
        }
        for (const Span &each : codes) {
            codes_.insert({{comment.file, line_of(comment)}, {each, comment, codes.size() == 1}});
        }
    }

    // The part of the comment's line that stands before it.
    std::string_view before(Span comment) const {
        const std::string_view text = sources_.text(comment.file).substr(0, comment.begin);
        return text.substr(text.rfind('\n') + 1);
    }

    // The line that a remark is about, or 0.
    uint32_t line_of(Span comment) const {
        uint32_t line = sources_.position(comment.file, comment.begin).line;
        if (!trimmed(before(comment)).empty()) {
            return line;
        }
        std::string_view behind = sources_.text(comment.file).substr(comment.end);
        for (size_t end = behind.find('\n'); end != behind.npos; end = behind.find('\n')) {
            behind.remove_prefix(end + 1);
            ++line;
            const std::string_view next = trimmed(behind.substr(0, behind.find('\n')));
            if (!next.empty() && !next.starts_with("//")) {
                return line;
            }
        }
        return 0;
    }

    // What goes with a comment when it goes: the blanks before it, and its line if it has one of its own.
    Span with_space(Span comment) const {
        const std::string_view line = before(comment);
        const size_t kept = trimmed(line).empty() ? 0 : line.find_last_not_of(blanks) + 1;
        const std::string_view behind = sources_.text(comment.file).substr(comment.end);
        const size_t end = behind.find('\n');
        comment.begin -= static_cast<uint32_t>(line.size() - kept);
        comment.end += kept == 0 && end != behind.npos ? static_cast<uint32_t>(end + 1) : 0;
        return comment;
    }

    const Sources &sources_;
    std::multimap<std::pair<uint32_t, uint32_t>, Code> codes_; // by file and line
    Diagnostics malformed_;
};

} // namespace

void apply_silences(const Sources &sources, const std::vector<uint32_t> &files, Diagnostics &warnings) {
    Silences silences(sources, files);
    warnings.leave_out([&](const Diagnostic &each) { return silences.silence(each); });
    silences.report_idle(warnings);
}

} // namespace tlvc
