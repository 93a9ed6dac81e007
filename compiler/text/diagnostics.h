// What was found wrong, and where.
#pragma once

#include "compiler/text/faults.h"
#include "compiler/text/source.h"

#include <algorithm>
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
        std::string message = fmt::vformat(fault.message(), fmt::make_format_args(args...));
        found_.push_back({&fault, fault.severity(), span, std::move(message), {}, {}});
        return found_.back();
    }

    void append(const Diagnostics &others) {
        found_.insert(found_.end(), others.found_.begin(), others.found_.end());
    }
    size_t count(Severity severity) const {
        return static_cast<size_t>(std::count_if(
            found_.begin(), found_.end(), [=](const auto &each) { return each.severity == severity; }));
    }
    bool any() const { return count(Severity::Error) != 0; }
    void refuse_warnings() {
        for (Diagnostic &each : found_) {
            each.severity = Severity::Error;
        }
    }
    std::vector<Diagnostic> in_file_order() const;

private:
    std::vector<Diagnostic> found_;
};

} // namespace tlvc
