#include "compiler/text/diagnostics.h"

#include "base/suggest.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tlvc {

std::string_view Fault::message() const {
    const std::string_view line = text.substr(0, text.find('\n'));
    return line.substr(line.find(": ") + 2);
}

Diagnostic &Diagnostic::suggest(std::string_view name, const std::vector<std::string_view> &candidates) {
    return help(tlvmsg::base::did_you_mean(name, candidates));
}

void Diagnostics::append(const Diagnostics &others) {
    const size_t added = std::min(others.kept_.size(), most_kept - kept_.size());
    kept_.insert(kept_.end(), others.kept_.begin(),
                 others.kept_.begin() + static_cast<std::ptrdiff_t>(added));
    for (size_t i = 0; i < counts_.size(); ++i) {
        counts_[i] += others.counts_[i];
    }
}

void Diagnostics::refuse_warnings() {
    for (Diagnostic &each : kept_) {
        each.severity = Severity::Error;
    }
    size_t &warnings = counts_[static_cast<size_t>(Severity::Warning)];
    counts_[static_cast<size_t>(Severity::Error)] += std::exchange(warnings, 0);
}

std::vector<Diagnostic> Diagnostics::in_file_order() const {
    std::vector<Diagnostic> result = kept_;
    std::stable_sort(result.begin(), result.end(), [](const Diagnostic &a, const Diagnostic &b) {
        return std::tie(a.span.file, a.span.begin) < std::tie(b.span.file, b.span.begin);
    });
    return result;
}

} // namespace tlvc
