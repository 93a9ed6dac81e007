// What was found wrong, and where.
#pragma once

#include "compiler/text/faults.h"
#include "compiler/text/source.h"

#include <array>
#include <fmt/format.h>
#include <vector>

namespace tlvc {

struct Diagnostic {
    struct Note {
        Span span;
        std::string text;
    };

    const Fault *fault;
    Severity severity; // an error may be made of a warning
    Span span;
    std::string message;
    std::vector<Note> notes;
    std::vector<std::string> helps;

    Diagnostic &note(Span place, std::string text) {
        notes.push_back({place, std::move(text)});
        return *this;
    }
    // Unless it is empty.
    Diagnostic &help(std::string text) {
        if (!text.empty()) {
            helps.push_back(std::move(text));
        }
        return *this;
    }
    // "did you mean 'x'?", if a candidate is near enough.
    Diagnostic &suggest(std::string_view name, const std::vector<std::string_view> &candidates);
};

class Diagnostics {
public:
    // The result is good until the next report.
    template <typename... Args>
    Diagnostic &report(const Fault &fault, Span span, const Args &...args) {
        ++counts_[static_cast<size_t>(fault.severity())];
        if (kept_.size() == most_kept) {
            return spare_ = {&fault, fault.severity(), span, {}, {}, {}};
        }
        std::string message = fmt::vformat(fault.message(), fmt::make_format_args(args...));
        kept_.push_back({&fault, fault.severity(), span, std::move(message), {}, {}});
        return kept_.back();
    }

    void append(const Diagnostics &others);
    void refuse_warnings();
    size_t count(Severity severity) const { return counts_[static_cast<size_t>(severity)]; }
    bool any() const { return count(Severity::Error) != 0; }

    // The first that were found, as many as a program may want to read: the others are only counted.
    std::vector<Diagnostic> in_file_order() const;

private:
    static constexpr size_t most_kept = 100'000; // what is no schema has as many faults as characters

    std::vector<Diagnostic> kept_;
    Diagnostic spare_{};
    std::array<size_t, 2> counts_{}; // by severity
};

} // namespace tlvc
