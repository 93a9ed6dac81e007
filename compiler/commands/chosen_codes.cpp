#include "compiler/commands/chosen_codes.h"

#include "compiler/text/faults.h"

#include <algorithm>
#include <vector>

namespace tlvc {

namespace {

std::vector<std::string_view> items(std::string_view list) {
    std::vector<std::string_view> all;
    for (size_t comma = list.find(','); comma != list.npos; comma = list.find(',')) {
        all.push_back(list.substr(0, comma));
        list.remove_prefix(comma + 1);
    }
    all.push_back(list);
    return all;
}

Codes all_warnings() {
    Codes codes;
    for (const Fault *each : fault::all) {
        if (each->severity() == Severity::Warning) {
            codes.insert(each->code);
        }
    }
    return codes;
}

} // namespace

bool is_list_of_codes(std::string_view word) {
    return std::ranges::all_of(items(word), [](std::string_view item) {
        item.remove_prefix(item.starts_with('-') ? 1 : 0);
        return item == "all" ||
               (item.size() == 4 && item[0] == 'W' && item.find_first_not_of("0123456789", 1) == item.npos);
    });
}

bool choose(std::string_view list, Codes &chosen) {
    const Codes all = all_warnings();
    if (list.starts_with('-') && chosen.empty()) {
        chosen = all;
    }
    return std::ranges::all_of(items(list), [&](std::string_view item) {
        const bool out = item.starts_with('-');
        item.remove_prefix(out ? 1 : 0);
        if (item == "all" && !out) {
            chosen = all;
            return true;
        }
        const auto known = all.find(item);
        if (known == all.end()) {
            return false;
        }
        out ? static_cast<void>(chosen.erase(*known)) : static_cast<void>(chosen.insert(*known));
        return true;
    });
}

} // namespace tlvc
