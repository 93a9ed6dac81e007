#include "compiler/compare/compare.h"

#include "compiler/compare/missed.h"
#include "compiler/compare/pairing.h"
#include "compiler/compare/replacement.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

using Parts = std::vector<PartPair>;

// The types, and perhaps the part, that a finding is about.
struct Subject {
    const Type *before;
    const Type *after;
    PartPair part;
};

std::set<uint32_t> values_that_choose(const Type &type) {
    std::set<uint32_t> values;
    for (const Alternative &each : type.alternatives) {
        values.insert(each.values.begin(), each.values.end());
    }
    return values;
}

// Values that old peers send as a selector: records that were zeroed have 0, and values with a name are in use.
std::set<uint32_t> values_in_use(const Type &selector) {
    std::set<uint32_t> values{0};
    for (const Enumerator &each : selector.enumerators) {
        values.insert(each.value);
    }
    return values;
}

// Tags of all families, in order.
std::vector<Reserved> reserved_tags(const Schema &schema) {
    std::vector<Reserved> tags;
    for (const Family &family : schema.families) {
        tags.insert(tags.end(), family.reserved.begin(), family.reserved.end());
    }
    std::ranges::sort(tags, {}, &Reserved::first);
    return tags;
}

// Facts about a type, worked out once however many findings need them.
template <auto work_out>
class Known {
public:
    const auto &of(const Type &type) {
        const auto found = known_.find(&type);
        return found != known_.end() ? found->second : known_.emplace(&type, work_out(type)).first->second;
    }

private:
    std::map<const Type *, std::invoke_result_t<decltype(work_out), const Type &>> known_;
};

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
        : before_(before), after_(after), holders_(before), pairing_(before, after, holders_, families_count),
          old_in_messages_(types_in_messages(before)), new_in_messages_(types_in_messages(after)),
          old_reserved_(reserved_tags(before)), new_reserved_(reserved_tags(after)) {}

    std::vector<Finding> run() {
        for (const Type &type : before_.types) {
            if (const Type *now = pairing_.partner(&type)) {
                compare(type, *now);
            } else {
                report(type_removed, {&type, nullptr, {}}, std::string(in_words(type)), "");
                compare_tag(type, nullptr);
            }
        }
        for (const Type &type : after_.types) {
            if (pairing_.partner(&type) == nullptr) {
                report(type_added, {nullptr, &type, {}}, "", std::string(in_words(type)));
            }
        }
        for (const Reserved &each : without(old_reserved_, new_reserved_)) {
            report_unreserved(tag_unreserved, {}, each);
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
        compare_tag(before, &after);
        if (broad_kind(before) != broad_kind(after)) {
            return report(kind_changed, types, std::string(in_words(before)), std::string(in_words(after)));
        }
        if (has_tag(before) && before.tag != after.tag) {
            report(tag_changed, types, std::to_string(before.tag), std::to_string(after.tag));
        }
        if (before.key != after.key) {
            report_key(types);
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
        compare_reserved(before, after, old_parts, new_parts);
    }

    void compare_tag(const Type &before, const Type *after) {
        const bool kept = after != nullptr && has_tag(*after) && after->tag == before.tag;
        if (has_tag(before) && !kept && !is_reserved(new_reserved_, before.tag)) {
            report(tag_freed, {&before, after, {}}, fmt::format("tag {}", before.tag), "");
            say_who_has({before.tag, before.tag, {}});
        }
    }

    // Of enumerations: values that have lost their names, or their reservations.
    void compare_reserved(const Type &before, const Type &after, const std::vector<Part> &old_parts,
                          const std::vector<Part> &new_parts) {
        if (before.kind != Kind::Enumeration) {
            return;
        }
        std::set<uint32_t> named;
        for (const Part &each : new_parts) {
            named.insert(each.values.front());
        }
        for (const Part &each : old_parts) {
            if (const uint32_t value = each.values.front();
                !named.contains(value) && !is_reserved(after.reserved, value)) {
                report(value_freed, {&before, &after, {&each, nullptr}}, fmt::format("value {}", value), "");
            }
        }
        for (const Reserved &each : without(before.reserved, after.reserved)) {
            report_unreserved(value_unreserved, {&before, &after, {}}, each);
        }
    }

    void report_unreserved(const Rule &rule, const Subject &subject, const Reserved &range) {
        report(rule, subject, "reserved " + spelled(range), "");
        found_.back().old_span = range.span;
        if (&rule == &tag_unreserved) {
            found_.back().type = range.first == range.last ? fmt::format("{}", range.first)
                                                           : fmt::format("{}-{}", range.first, range.last);
            say_who_has(range);
        }
    }

    // Adds to the last finding which new type has a tag of the range.
    void say_who_has(const Reserved &range) {
        const auto has_one = [&](const Type &type) { return has_tag(type) && range.has(type.tag); };
        if (const auto type = std::ranges::find_if(after_.types, has_one); type != after_.types.end()) {
            found_.back().effect = fmt::format("'{}' has {} now", type->name, type->tag);
        }
    }

    // Nobody relies on a key that was not stated.
    void report_key(const Subject &types) {
        const auto stated = [](const Type &type) { return type.key ? std::to_string(*type.key) : ""; };
        report(key_changed, types, stated(*types.before), stated(*types.after));
        if (!types.before->key) {
            found_.back().levels = Nothing;
            found_.back().effect = "no receiver knew it by a key";
        }
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
        } else {
            report_appended(subject, *first->type);
        }
    }

    // The first of the appended members decides whether they are missed.
    void report_appended(const Subject &subject, const Type &first) {
        const std::string why = missed_.why_missed(first, *subject.before);
        const std::string filling = what_fills(*subject.part.after->type);
        if (!why.empty()) {
            report(member_missed, subject);
            found_.back().effect += ": " + why;
        } else if (!filling.empty()) {
            report(member_filled, subject);
            found_.back().effect += ": " + filling;
        } else {
            report(member_appended, subject);
        }
    }

    // Parts that both sides have. A count or selector follows from the type behind it.
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
            if (keeps_place(subject)) {
                found_.back().levels &= ~Levels{Layout};
            }
        } else if (old->name != now->name && steps(*old) > 0) {
            report(old->type != nullptr ? name_changed : enumerator_renamed, subject, old->name, now->name);
            say_that_functions_follow(*old, *now);
        }
        if (old->attributes != now->attributes) {
            report(attribute_changed, subject, old->attributes, now->attributes);
        }
        compare_type(subject);
        compare_values(subject);
    }

    // The type of an array in place is called after its member.
    void say_that_functions_follow(const Part &old, const Part &now) {
        const bool array =
            old.type != nullptr && is_array(*old.type) && pairing_.partner(old.type) == now.type;
        if (array && old.type->name != now.type->name) {
            found_.back().effect +=
                fmt::format(", and functions of {} are now those of {}", old.type->name, now.type->name);
        }
    }

    // True if a selector or union that has moved into another record is where it was. The union's functions take the
    // record that it is in, so it also has to begin its structure.
    bool keeps_place(const Subject &subject) {
        const auto &[before, after, part] = subject;
        const auto begins = [](const Type &structure, const Member &moved) {
            const auto index = static_cast<size_t>(&moved - structure.members.data());
            return index == (moved.type->kind == Kind::Union ? 1 : 0); // behind its selector
        };
        return begins(*before, *part.before->member) && begins(*after, *part.after->member) &&
               records_.same_extent(*before, *after) && records_.same_offsets(*before, *after);
    }

    void compare_type(const Subject &subject) {
        if (subject.part.before->type == nullptr) {
            return;
        }
        const Type &old = *subject.part.before->type;
        const Type &now = *subject.part.after->type;
        if (pairing_.partner(&old) != &now) {
            report(type_changed, subject, old.name, now.name);
            found_.back().levels = replacement_.breaks(old, now);
        }
    }

    void compare_values(const Subject &subject) {
        const auto &[old, now] = subject.part;
        if (old->type == nullptr && old->values != now->values) {
            return report(enumerator_value, subject);
        }
        const std::set<uint32_t> values(now->values.begin(), now->values.end());
        for (const uint32_t value : old->values) {
            if (!values.contains(value)) {
                const bool elsewhere = choosing_.of(*subject.after).contains(value);
                report(elsewhere ? choice_changed : choice_removed, subject,
                       fmt::format("chosen by {}", value), "not");
                found_.back().levels = Wire | Json; // the alternative is still there
            }
        }
        const auto is_new = [&](uint32_t value) { return !choosing_.of(*subject.before).contains(value); };
        if (old->type != nullptr && std::any_of(now->values.begin(), now->values.end(), is_new)) {
            report_choice(subject);
        }
    }

    // Values that chose nothing choose something. Old decoders stop there, which at the end is no loss.
    void report_choice(const Subject &subject) {
        const bool inserted = stands_before_others(*subject.before);
        report(inserted ? choice_inserted : choice_added, subject);
        const auto is_sent = [&](uint32_t value) {
            return !choosing_.of(*subject.before).contains(value) &&
                   in_use_.of(*subject.before->selector).contains(value);
        };
        if (!inserted && std::ranges::any_of(subject.part.after->values, is_sent)) {
            found_.back().levels |= Wire;
            found_.back().effect = "old ones send the value, and new decoders then take what follows for it";
        }
    }

    bool stands_before_others(const Type &old) {
        const auto [known, is_new] = before_others_.try_emplace(&old);
        if (is_new) {
            known->second = std::ranges::any_of(holders_.of(old), [](const Holder &each) {
                return each.member + 1 < each.type->members.size();
            });
        }
        return known->second;
    }

    void report(const Rule &rule, const Subject &subject) {
        report(rule, subject, spelled(subject.part.before), spelled(subject.part.after));
    }

    void report(const Rule &rule, const Subject &subject, std::string was, std::string is) {
        const auto &[before, after, part] = subject;
        const Part *const named = part.after != nullptr ? part.after : part.before;
        const bool resized = rule.levels > all_levels && !records_.same_extent(*before, *after);
        const auto place = [](const Type *type, const Part *part_of_it) {
            return part_of_it != nullptr ? std::optional(part_of_it->span)
                   : type != nullptr     ? std::optional(type->span)
                                         : std::nullopt;
        };
        const Type *const type = after != nullptr ? after : before; // none for tags
        found_.push_back(
            {&rule, (rule.levels & all_levels) | (resized ? Layout : Nothing),
             type != nullptr ? type->name : "", named != nullptr ? named->name : "", std::move(was),
             std::move(is), std::string(rule.effect),
             type == nullptr || old_in_messages_.contains(before) || new_in_messages_.contains(after),
             place(named == part.before ? before : nullptr, part.before), place(after, part.after)});
    }

    const Schema &before_;
    const Schema &after_;
    const Holders holders_; // of the old side
    const Pairing pairing_;
    const std::set<const Type *> old_in_messages_;
    const std::set<const Type *> new_in_messages_;
    const std::vector<Reserved> old_reserved_; // tags
    const std::vector<Reserved> new_reserved_;
    MissedMembers missed_{holders_};
    Records records_;
    Replacement replacement_{pairing_, records_};
    Known<values_that_choose> choosing_;
    Known<values_in_use> in_use_;
    std::map<const Type *, bool> before_others_; // of unions
    std::vector<Finding> found_;
};

} // namespace

std::string name_of(const Finding &finding) {
    return finding.type + (finding.member.empty() ? "" : "." + finding.member);
}

bool is_refused(const Finding &finding) {
    return finding.levels != Nothing || finding.rule == &exception_idle;
}

std::vector<Finding> compare(const Schema &before, const Schema &after, bool families_count) {
    return Comparison(before, after, families_count).run();
}

} // namespace tlvc
