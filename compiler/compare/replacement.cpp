#include "compiler/compare/replacement.h"

#include <algorithm>

namespace tlvc {

namespace {

constexpr unsigned enumeration_width = 4;

bool is_unsigned(const Type &type) {
    return type.scalar == nullptr || type.scalar->sign == wire::Sign::Unsigned;
}
unsigned width(const Type &type) { return type.scalar != nullptr ? type.scalar->width : enumeration_width; }

bool holds_numbers_of(const Type &before, const Type &after) {
    return is_unsigned(before) == is_unsigned(after) ? width(before) <= width(after)
                                                     : is_unsigned(before) && width(before) < width(after);
}

bool holds_names_of(const Type &before, const Type &after) {
    const auto entry = [](const Enumerator &each) { return std::pair(each.name, each.value); };
    std::set<std::pair<std::string, uint32_t>> known;
    std::ranges::transform(after.enumerators, std::inserter(known, known.end()), entry);
    return std::ranges::all_of(before.enumerators,
                               [&](const Enumerator &each) { return known.contains(entry(each)); });
}

// The type of the number in C, where an enumeration is a typedef.
std::string_view spelled_in_c(const Type &number) {
    return number.scalar != nullptr ? number.scalar->record : "uint32_t";
}

bool same_to_programs(const Type &before, const Type &after) {
    return is_number(before) && is_number(after) && spelled_in_c(before) == spelled_in_c(after);
}

void add_offsets(Layouts &layouts, const Type &type, uint64_t begin, std::vector<uint64_t> &offsets) {
    const RecordLayout &record = layouts.of(type);
    for (size_t i = 0; i < type.fields.size(); ++i) {
        const Field &field = type.fields[i];
        if (field.storage == Field::Storage::Plain && has_own_record(*field.type)) {
            add_offsets(layouts, *field.type, begin + record.offsets[i], offsets);
        } else {
            offsets.push_back(begin + record.offsets[i]);
        }
    }
}

} // namespace

bool Records::same_extent(const Type &before, const Type &after) {
    return std::ranges::all_of(layouts_, [&](Layouts &layouts) {
        const RecordLayout &old = layouts.of(before);
        const RecordLayout &now = layouts.of(after);
        return old.size == now.size && old.alignment == now.alignment;
    });
}

bool Records::same_offsets(const Type &before, const Type &after) {
    return std::ranges::all_of(layouts_, [&](Layouts &layouts) {
        std::vector<uint64_t> old;
        std::vector<uint64_t> now;
        add_offsets(layouts, before, 0, old);
        add_offsets(layouts, after, 0, now);
        return old == now;
    });
}

Levels Replacement::breaks(const Type &before, const Type &after) {
    return (same_elements(before, after) ? Nothing : Wire) |
           (reads_documents(before, after) ? Nothing : Json) |
           (same_to_programs(before, after) ? Nothing : Source) |
           (records_.same_extent(before, after) ? Nothing : Layout);
}

// Arrays have no tag of their own: they are the same when they hold the same.
bool Replacement::same_elements(const Type &before, const Type &after) const {
    return is_array(before) && is_array(after) && broad_kind(before) == broad_kind(after) &&
           before.capacity == after.capacity && before.count->name == after.count->name &&
           pairing_.partner(before.element) == after.element;
}

// Whether documents with the old type are right for the new one. Differences between partners have their own findings.
bool Replacement::reads_documents(const Type &before, const Type &after) {
    if (pairing_.partner(&before) == &after) {
        return true;
    }
    const auto [known, is_new] = reads_.try_emplace({&before, &after});
    if (is_new) {
        known->second = reads_parts(before, after);
    }
    return known->second;
}

bool Replacement::reads_parts(const Type &before, const Type &after) {
    if (is_number(before) && is_number(after)) {
        return holds_numbers_of(before, after) && holds_names_of(before, after);
    }
    if (broad_kind(before) != broad_kind(after)) {
        return false;
    }
    if (is_array(before)) {
        return before.capacity <= after.capacity && reads_documents(*before.count, *after.count) &&
               reads_documents(*before.element, *after.element);
    }
    return reads_members(before, after) && reads_alternatives(before, after);
}

bool Replacement::reads_members(const Type &before, const Type &after) {
    return std::ranges::equal(before.members, after.members, [this](const Member &old, const Member &now) {
        return old.path == now.path && reads_documents(*old.type, *now.type);
    });
}

bool Replacement::reads_alternatives(const Type &before, const Type &after) {
    const bool same_selector =
        before.kind != Kind::Union ||
        (before.selector_name == after.selector_name && reads_documents(*before.selector, *after.selector));
    return same_selector && (before.enclosing == nullptr) == (after.enclosing == nullptr) &&
           std::ranges::equal(before.alternatives, after.alternatives,
                              [this](const Alternative &old, const Alternative &now) {
                                  return old.name == now.name && old.values == now.values &&
                                         reads_documents(*old.type, *now.type);
                              });
}

} // namespace tlvc
