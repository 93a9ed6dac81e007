#include "compiler/checks/checks.h"
#include "compiler/model/reserved_numbers.h"

#include <map>

namespace tlvc {

namespace {

// Reservations of a family or of an enumeration. Faulty ones are reported and left out.
class Reservations {
public:
    void add(const syntax::NumberRange &range, Diagnostics &faults) {
        const auto &[first, last, span] = range;
        if (last.value < first.value) {
            faults.report(fault::bad_reservation, span, "the range ends before it begins")
                .help(fmt::format("write: {} to {}", last.value, first.value));
        } else if (const syntax::NumberRange *const other = any(first.value, last.value)) {
            const uint64_t both = std::max(first.value, other->first.value);
            faults.report(fault::bad_reservation, span, fmt::format("{} is reserved already", both))
                .note(other->span, "the other is here");
        } else {
            by_first_[first.value] = &range;
        }
    }

    // Null if the number is not reserved.
    const syntax::NumberRange *find(uint64_t number) const { return any(number, number); }

private:
    const syntax::NumberRange *any(uint64_t first, uint64_t last) const {
        const auto behind = by_first_.upper_bound(last);
        const syntax::NumberRange *const range =
            behind == by_first_.begin() ? nullptr : std::prev(behind)->second;
        return range != nullptr && range->last.value >= first ? range : nullptr;
    }

    std::map<uint64_t, const syntax::NumberRange *> by_first_; // no two have a number in common
};

void refuse(const Reservations &reserved, const syntax::Number &number, std::string_view what,
            Diagnostics &faults) {
    if (const syntax::NumberRange *const range = reserved.find(number.value)) {
        faults.report(fault::reserved_number, number.span, what, number.value)
            .note(range->span, "it is reserved here");
    }
}

// Adds the ranges whose numbers there can be. `check` reports a number that there cannot.
template <typename Check>
void add(Reservations &reserved, const std::vector<syntax::Reservation> &written, Diagnostics &faults,
         Check check) {
    for (const syntax::Reservation &reservation : written) {
        for (const syntax::NumberRange &range : reservation.ranges) {
            if (check(range.first) &&
                (range.first.span.begin == range.last.span.begin || check(range.last))) {
                reserved.add(range, faults);
            }
        }
    }
}

void check_tags(const Resolution &resolution, Diagnostics &faults) {
    std::map<std::string, Reservations> families;
    for (const Unit &unit : resolution.program.units) {
        add(families[unit.family], unit.syntax.reserved, faults, [&](const syntax::Number &tag) {
            const bool fits = tag.value >= wire::lowest_tag && tag.value <= wire::highest_tag;
            if (!fits) {
                faults.report(fault::tag_out_of_range, tag.span, wire::lowest_tag, wire::highest_tag);
            }
            return fits;
        });
    }
    for (const auto &[syntax, type] : resolution.declared) {
        for (const auto &[family, reserved] : families) {
            if (has_tag(*type) && syntax->sound) {
                refuse(reserved, syntax->number, "tag", faults);
            }
        }
    }
}

void check_values(const syntax::Declaration &enumeration, Diagnostics &faults) {
    Reservations reserved;
    add(reserved, enumeration.reserved, faults, [&](const syntax::Number &value) {
        if (value.value > highest_value) {
            faults.report(fault::large_value, value.span, highest_value);
        }
        return value.value <= highest_value;
    });
    for (const syntax::Enumerator &each : enumeration.enumerators) {
        refuse(reserved, each.value, "value", faults);
    }
}

} // namespace

void check_reserved(const Resolution &resolution, Diagnostics &faults) {
    check_tags(resolution, faults);
    for (const Declared &declared : resolution.declared) {
        if (declared.syntax->sound) {
            check_values(*declared.syntax, faults);
        }
    }
}

} // namespace tlvc
