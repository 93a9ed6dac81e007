#include "compiler/compare/compare.h"

#include "compiler/checks/checks.h"
#include "compiler/compare/missed.h"
#include "compiler/compare/pairing.h"
#include "compiler/model/layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace tlvc {

namespace {

using Parts = std::vector<PartPair>;

// What a finding is about.
struct Subject {
    const Type *before;
    const Type *after;
    PartPair part;
};

// Whether documents with the old number can be read as the new one.
bool number_fits(const Type &old, const Type &now) {
    const auto width = [](const Type &type) { return type.scalar != nullptr ? type.scalar->width : 4; };
    const auto is_unsigned = [](const Type &type) {
        return type.scalar == nullptr || type.scalar->is_unsigned;
    };
    return old.enumerators.empty() &&
           (is_unsigned(old) == is_unsigned(now) ? width(old) <= width(now)
                                                 : is_unsigned(old) && width(old) < width(now));
}

// The two kinds of arrays with a capacity are one to a reader.
Kind broad_kind(const Type &type) { return type.kind == Kind::PackedArray ? Kind::ElementArray : type.kind; }

bool chooses(const std::vector<uint32_t> &values, uint32_t value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

bool chooses(const Type &type, uint32_t value) {
    return std::ranges::any_of(type.alternatives, [=](auto &each) { return chooses(each.values, value); });
}

std::string spelled(const Part *part) {
    if (part == nullptr) {
        return {};
    }
    const std::string values = fmt::format("{}", fmt::join(part->values, ", "));
    return part->type == nullptr ? values : values + (values.empty() ? "" : ": ") + part->type->name;
}

class Comparison {
public:
    Comparison(const Schema &before, const Schema &after, bool families_count)
        : before_(before), after_(after), pairing_(before, after, families_count) {}

    std::vector<Finding> run() {
        for (const Type &type : before_.types) {
            if (const Type *now = pairing_.partner(&type)) {
                compare(type, *now);
            } else {
                report(type_removed, {&type, nullptr, {}}, std::string(describe(type)), "");
            }
        }
        for (const Type &type : after_.types) {
            if (pairing_.partner(&type) == nullptr) {
                report(type_added, {nullptr, &type, {}}, "", std::string(describe(type)));
            }
        }
        return std::move(found_);
    }

private:
    void compare(const Type &before, const Type &after) {
        const Subject types{&before, &after, {}};
        if (before.name != after.name) {
            report(type_renamed, types, before.name, after.name);
        }
        if (!pairing_.same_family(before, after)) {
            report(family_moved, types, before.family->name, after.family->name);
        }
        if (broad_kind(before) != broad_kind(after)) {
            return report(kind_changed, types, std::string(describe(before)), std::string(describe(after)));
        }
        if (has_tag(before) && before.tag != after.tag) {
            report(tag_changed, types, std::to_string(before.tag), std::to_string(after.tag));
        }
        if (before.capacity != after.capacity) {
            report(before.capacity < after.capacity ? room_grown : room_shrunk, types,
                   fmt::format("room for {}", before.capacity), fmt::format("room for {}", after.capacity));
        }
        const std::vector<Part> old_parts = parts_of(before);
        const std::vector<Part> new_parts = parts_of(after);
        const Parts parts = pairing_.parts(old_parts, new_parts);
        compare_order(before, after, parts);
        for (const PartPair &each : parts) {
            const Subject subject{&before, &after, each};
            if (each.both()) {
                compare_part(subject);
            } else if (each.after == nullptr && !each.before->lives_in_next()) {
                report(before.kind == Kind::Enumeration ? enumerator_removed
                       : before.kind == Kind::Union     ? choice_removed
                                                        : member_removed,
                       subject);
            }
        }
        compare_added(before, after, parts, new_parts.data());
    }

    // One finding a type: the first member that now stands before one that it was behind.
    void compare_order(const Type &before, const Type &after, const Parts &parts) {
        PartPair last;
        for (const PartPair &each : parts) {
            if (each.both() && each.before->member != nullptr && !each.before->lives_in_next()) {
                if (last.after > each.after) {
                    const std::string &other = last.before->name;
                    return report(order_changed, {&before, &after, each}, "behind " + other,
                                  "before " + other);
                }
                last = each;
            }
        }
    }

    // `end` is that of the new parts which both have; none to begin with.
    void compare_added(const Type &before, const Type &after, const Parts &parts, const Part *end) {
        for (const PartPair &each : parts) {
            end = each.both() ? std::max(end, each.after + 1) : end;
        }
        for (const PartPair &each : parts) {
            if (each.before == nullptr && !each.after->lives_in_next()) {
                report_added({&before, &after, each}, each.after < end, end);
            }
        }
    }

    void report_added(const Subject &subject, bool inserted, const Part *first) {
        const Type &type = *subject.after;
        if (type.kind == Kind::Enumeration) {
            report(enumerator_added, subject);
        } else if (type.kind == Kind::Union) {
            report_choice(subject);
        } else if (inserted || type.kind == Kind::Message) {
            report(inserted ? member_inserted : message_extended, subject);
        } else if (const std::string why = why_missed(*first->type, *subject.before, before_); !why.empty()) {
            report(member_missed, subject);
            found_.back().effect += ": " + why;
        } else {
            report(member_appended, subject);
        }
    }

    // What both have. A count or selector follows from the type behind it.
    void compare_part(const Subject &subject) {
        const auto &[old, now] = subject.part;
        if (old->lives_in_next() && now->lives_in_next()) {
            return;
        }
        const auto steps = [](const Part &part) {
            return part.member == nullptr ? 1 : part.member->path.size();
        };
        if (steps(*old) != steps(*now)) {
            report(record_changed, subject, old->name, now->name);
        } else if (old->name != now->name && steps(*old) > 0) {
            report(old->type != nullptr ? name_changed : enumerator_renamed, subject, old->name, now->name);
        }
        if (old->attribute != now->attribute) {
            report(attribute_changed, subject, old->attribute, now->attribute);
        }
        compare_type(subject);
        compare_values(subject);
    }

    void compare_type(const Subject &subject) {
        if (subject.part.before->type == nullptr) {
            return;
        }
        const Type &old = *subject.part.before->type;
        const Type &now = *subject.part.after->type;
        if (pairing_.partner(&old) != &now) {
            const bool reads = is_number(old) && is_number(now) ? number_fits(old, now) : same_wire(old, now);
            report(type_changed, subject, old.name, now.name);
            found_.back().levels = (same_wire(old, now) ? Nothing : Wire) | (reads ? Nothing : Json) |
                                   Source | (same_extent(old, now) ? Nothing : Layout);
        }
    }

    // Of types that are no partners: arrays are the same when they hold the same.
    bool same_wire(const Type &old, const Type &now) const {
        return is_array(old) && is_array(now) && broad_kind(old) == broad_kind(now) &&
               old.capacity == now.capacity && old.count->name == now.count->name &&
               pairing_.partner(old.element) == now.element;
    }

    void compare_values(const Subject &subject) {
        const auto &[old, now] = subject.part;
        if (old->type == nullptr && old->values != now->values) {
            return report(enumerator_value, subject);
        }
        for (const uint32_t value : old->values) {
            if (!chooses(now->values, value)) {
                const bool elsewhere = chooses(*subject.after, value);
                report(elsewhere ? choice_changed : choice_removed, subject,
                       fmt::format("chosen by {}", value), "not");
                found_.back().levels = Wire | Json; // the alternative is still there
            }
        }
        const auto is_new = [&](uint32_t value) { return !chooses(*subject.before, value); };
        if (old->type != nullptr && std::any_of(now->values.begin(), now->values.end(), is_new)) {
            report_choice(subject);
        }
    }

    // Values that chose nothing choose something. Old decoders stop there, which at the end is no loss.
    void report_choice(const Subject &subject) {
        const auto has_more_behind = [&](const Type &holder) {
            const auto held = std::ranges::find(holder.members, subject.before, &Member::type);
            return held != holder.members.end() && held + 1 != holder.members.end();
        };
        const bool inserted = std::any_of(before_.types.begin(), before_.types.end(), has_more_behind);
        report(inserted ? choice_inserted : choice_added, subject);
        const auto is_sent =
            [&](uint32_t value) { // by old peers: zeroed records have 0, and names are for use
                const auto &named = subject.before->selector->enumerators;
                return !chooses(*subject.before, value) &&
                       (value == 0 || std::ranges::count(named, value, &Enumerator::value) > 0);
            };
        if (!inserted && std::ranges::any_of(subject.part.after->values, is_sent)) {
            found_.back().levels |= Wire;
            found_.back().effect = "old ones send the value, and new decoders then take what follows for it";
        }
    }

    bool same_extent(const Type &before, const Type &after) {
        return std::all_of(layouts_.begin(), layouts_.end(), [&](Layouts &layouts) {
            const RecordLayout &old = layouts.of(before);
            const RecordLayout &now = layouts.of(after);
            return old.size == now.size && old.alignment == now.alignment;
        });
    }

    void report(const Rule &rule, const Subject &subject) {
        report(rule, subject, spelled(subject.part.before), spelled(subject.part.after));
    }

    void report(const Rule &rule, const Subject &subject, std::string was, std::string is) {
        const auto &[before, after, part] = subject;
        const Part *const named = part.after != nullptr ? part.after : part.before;
        const bool resized = rule.levels > all_levels && !same_extent(*before, *after);
        const auto place = [](const Type *type, const Part *part_of_it) {
            return part_of_it != nullptr ? std::optional(part_of_it->span)
                   : type != nullptr     ? std::optional(type->span)
                                         : std::nullopt;
        };
        found_.push_back({&rule, (rule.levels & all_levels) | (resized ? Layout : Nothing),
                          (after != nullptr ? after : before)->name, named != nullptr ? named->name : "",
                          std::move(was), std::move(is), std::string(rule.effect()),
                          place(named == part.before ? before : nullptr, part.before),
                          place(after, part.after)});
    }

    const Schema &before_;
    const Schema &after_;
    const Pairing pairing_;
    std::array<Layouts, 3> layouts_{Layouts(lp64), Layouts(ilp32), Layouts(i386)};
    std::vector<Finding> found_;
};

} // namespace

std::vector<Finding> compare(const Schema &before, const Schema &after, bool families_count) {
    return Comparison(before, after, families_count).run();
}

} // namespace tlvc
