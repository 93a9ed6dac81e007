#include "compiler/text/corrections.h"

#include <algorithm>
#include <tuple>

namespace tlvc {

namespace {

bool overlap(const Correction &a, const Correction &b) {
    return a.span.begin < b.span.end && b.span.begin < a.span.end;
}

// Two faults may lack the same import.
bool same(const Correction &a, const Correction &b) {
    return a.span.begin == b.span.begin && a.span.end == b.span.end && a.replacement == b.replacement;
}

struct Chosen {
    std::vector<Correction> corrections;
    size_t mended = 0;

    bool has(const Correction &part) const {
        return std::ranges::any_of(corrections, [&](const auto &each) { return same(each, part); });
    }
    bool has_room_for(const Correction &part) const {
        return has(part) ||
               std::ranges::none_of(corrections, [&](const auto &each) { return overlap(each, part); });
    }
};

std::string corrected(std::string_view text, std::vector<Correction> corrections) {
    std::ranges::stable_sort(
        corrections, {}, [](const Correction &each) { return std::tuple(each.span.begin, each.span.end); });
    std::string result;
    size_t done = 0;
    for (const Correction &each : corrections) {
        result += text.substr(done, each.span.begin - done);
        result += each.replacement;
        done = each.span.end;
    }
    return result += text.substr(done);
}

} // namespace

std::map<uint32_t, CorrectedText> correct(const Diagnostics &faults, const Sources &sources,
                                          const std::set<uint32_t> &files) {
    std::map<uint32_t, Chosen> chosen;
    for (const Diagnostic &fault : faults.in_file_order()) {
        const auto fits = [&](const Correction &part) {
            return files.contains(part.span.file) && chosen[part.span.file].has_room_for(part);
        };
        if (fault.corrections.empty() || !std::ranges::all_of(fault.corrections, fits)) {
            continue;
        }
        for (const Correction &part : fault.corrections) {
            Chosen &all = chosen[part.span.file];
            if (!all.has(part)) {
                all.corrections.push_back(part);
            }
        }
        ++chosen[fault.span.file].mended;
    }
    std::map<uint32_t, CorrectedText> texts;
    for (const auto &[file, all] : chosen) {
        if (!all.corrections.empty()) {
            texts[file] = {corrected(sources.text(file), all.corrections), all.mended};
        }
    }
    return texts;
}

} // namespace tlvc
