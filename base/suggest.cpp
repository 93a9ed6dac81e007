#include "suggest.h"

#include "ascii.h"

#include <algorithm>

namespace tlvmsg::base {

namespace {

// Insertions, deletions, replacements and swaps of neighbours that turn one name into the other, whatever the case.
size_t edit_distance(std::string_view a, std::string_view b) {
    const auto same = [&](size_t i, size_t j) { return lower(a[i]) == lower(b[j]); };
    std::vector<size_t> before_last(b.size() + 1);
    std::vector<size_t> last(b.size() + 1);
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (size_t i = 1; i <= a.size(); ++i) {
        before_last.swap(last);
        last.swap(row);
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            size_t replaced = last[j - 1] + (same(i - 1, j - 1) ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && same(i - 1, j - 2) && same(i - 2, j - 1)) {
                row[j] = std::min(row[j], before_last[j - 2] + 1);
            }
        }
    }
    return row[b.size()];
}

} // namespace

std::string_view nearest(std::string_view name, const std::vector<std::string_view> &candidates,
                         size_t slips) {
    size_t best = std::min(name.size() / 3, slips) + 1; // a third of the letters wrong is no longer a slip
    std::string_view found;
    for (std::string_view candidate : candidates) {
        size_t longer = std::max(name.size(), candidate.size());
        if (longer - std::min(name.size(), candidate.size()) > best) {
            continue;
        }
        size_t distance = edit_distance(name, candidate);
        if (distance < best || (distance == best && !found.empty() && candidate < found)) {
            best = distance;
            found = candidate;
        }
    }
    return found;
}

std::string_view one_slip_from(std::string_view name, const std::vector<std::string_view> &candidates) {
    const std::string_view found = nearest(name, candidates, 1);
    const bool alone = std::ranges::all_of(
        candidates, [&](std::string_view each) { return each == found || nearest(name, {each}, 1).empty(); });
    return alone ? found : "";
}

std::string did_you_mean(std::string_view name, const std::vector<std::string_view> &candidates) {
    std::string_view found = nearest(name, candidates);
    return found.empty() ? "" : "did you mean '" + std::string(found) + "'?";
}

} // namespace tlvmsg::base
