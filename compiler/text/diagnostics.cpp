#include "compiler/text/diagnostics.h"

#include "base/suggest.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tlvc {

Report Report::note(Span place, std::string text) const {
    if (Diagnostic *diagnostic = all_->kept(index_)) {
        diagnostic->notes.push_back({place, std::move(text)});
    }
    return *this;
}

Report Report::help(std::string text) const {
    Diagnostic *diagnostic = all_->kept(index_);
    if (diagnostic != nullptr && !text.empty()) {
        diagnostic->helps.push_back(std::move(text));
    }
    return *this;
}

Report Report::correct(Span place, std::string replacement) const {
    if (Diagnostic *diagnostic = all_->kept(index_)) {
        diagnostic->corrections.push_back({place, std::move(replacement)});
    }
    return *this;
}

Report Report::suggest(std::string_view name, const std::vector<std::string_view> &candidates) const {
    const std::string_view certain = tlvmsg::base::one_slip_from(name, candidates);
    if (const Diagnostic *diagnostic = all_->kept(index_); diagnostic != nullptr && !certain.empty()) {
        correct(diagnostic->span, std::string(certain));
    }
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

void Diagnostics::leave_out(const std::function<bool(const Diagnostic &)> &unwanted) {
    std::erase_if(kept_, [&](const Diagnostic &each) {
        const bool gone = unwanted(each);
        counts_[static_cast<size_t>(each.severity)] -= gone ? 1 : 0;
        return gone;
    });
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
