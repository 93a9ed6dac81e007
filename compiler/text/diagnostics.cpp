#include "compiler/text/diagnostics.h"

#include "base/suggest.h"

#include <algorithm>
#include <tuple>

namespace tlvc {

std::string_view Fault::message() const {
    const std::string_view line = text.substr(0, text.find('\n'));
    return line.substr(line.find(": ") + 2);
}

Diagnostic &Diagnostic::suggest(std::string_view name, const std::vector<std::string_view> &candidates) {
    return help(tlvmsg::base::did_you_mean(name, candidates));
}

std::vector<Diagnostic> Diagnostics::in_file_order() const {
    std::vector<Diagnostic> result = found_;
    std::stable_sort(result.begin(), result.end(), [](const Diagnostic &a, const Diagnostic &b) {
        return std::tie(a.span.file, a.span.begin) < std::tie(b.span.file, b.span.begin);
    });
    return result;
}

} // namespace tlvc
