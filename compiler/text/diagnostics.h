// The faults that were found in a text, and where.
#pragma once

#include "compiler/text/faults.h"
#include "compiler/text/source.h"

#include <array>
#include <fmt/format.h>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

namespace tlvc {

// What a place in a text is to become.
struct Correction {
    Span span; // empty where something is only put in
    std::string replacement;
};

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
    std::vector<Correction> corrections; // they mend the fault together; none where it is not certain how
};

class Diagnostics;

// A diagnostic that was reported, by its place among the others: it can be completed however many follow.
class Report {
public:
    Report(Diagnostics &all, size_t index) : all_(&all), index_(index) {}

    Report note(Span place, std::string text) const;
    // An empty help is none.
    Report help(std::string text) const;
    // One of the corrections that mend the fault together, where there is no doubt how.
    Report correct(Span place, std::string replacement) const;
    // "did you mean 'x'?", if a candidate is near enough; and a correction of the name, which is the place of the fault,
    // where one alone is within a slip of it.
    Report suggest(std::string_view name, const std::vector<std::string_view> &candidates) const;

private:
    Diagnostics *all_;
    size_t index_;
};

class Diagnostics {
public:
    template <typename... Args>
    Report report(const FaultOf<Args...> &fault, Span span, const std::type_identity_t<Args> &...args) {
        ++counts_[static_cast<size_t>(fault.severity())];
        const size_t index = kept_.size();
        if (index < most_kept) {
            std::string message = fmt::vformat(fault.message, fmt::make_format_args(args...));
            kept_.push_back({&fault, fault.severity(), span, std::move(message), {}, {}, {}});
        }
        return {*this, index};
    }

    void append(const Diagnostics &others);
    void leave_out(const std::function<bool(const Diagnostic &)> &unwanted);
    void refuse_warnings();
    size_t count(Severity severity) const { return counts_[static_cast<size_t>(severity)]; }
    bool any() const { return count(Severity::Error) != 0; }

    // The first diagnostics that were reported, as many as a program may want to read. The others are only counted.
    std::vector<Diagnostic> in_file_order() const;

private:
    friend class Report;
    static constexpr size_t most_kept = 100'000; // a file that is no schema has as many faults as characters

    // Null if it was only counted.
    Diagnostic *kept(size_t index) { return index < kept_.size() ? &kept_[index] : nullptr; }

    std::vector<Diagnostic> kept_;
    std::array<size_t, 2> counts_{}; // by severity
};

} // namespace tlvc
