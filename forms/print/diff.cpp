// What differs between two records, member by member.
#include "forms/json/writer.h"
#include "forms/record/fields.h"
#include "forms/record/path.h"

#include <tlvmsg/forms/diff.h>

#include <algorithm>
#include <vector>

namespace tlvmsg::forms {

namespace {

struct Difference {
    std::string path;
    std::string a, b; // empty where that record has nothing
};

class Comparison {
public:
    // A null record is one that is not there.
    void compare(const tlvmsg_type *type, const void *a, const void *b) {
        switch (a != nullptr && b != nullptr ? shape_of(type) : Shape::number) {
        case Shape::number:
            return compare_whole(type, a, b);
        case Shape::fields:
            return compare_fields(type, a, b);
        case Shape::items:
            return compare_array(type, a, b);
        }
    }

    std::vector<Difference> found;

private:
    void compare_whole(const tlvmsg_type *type, const void *a, const void *b) {
        const auto text = [&](const void *record) { return record != nullptr ? json_of(type, record) : ""; };
        compare_texts(text(a), text(b));
    }

    void compare_texts(std::string a, std::string b) {
        if (a != b) {
            found.push_back({path_.text(), std::move(a), std::move(b)});
        }
    }

    // In a union, what either of them has chosen is compared.
    void compare_fields(const tlvmsg_type *type, const void *a, const void *b) {
        const auto in = [](const tlvmsg_field &field, const void *record) {
            const bool there = field.alternative == nullptr ||
                               field.alternative == tlvmsg_chosen_in(field.union_type, record);
            return there ? at_offset(record, field.offset) : nullptr;
        };
        for (tlvmsg_field field{}; tlvmsg_next_field(type, nullptr, &field);) {
            const void *const in_a = in(field, a);
            const void *const in_b = in(field, b);
            if (in_a != nullptr || in_b != nullptr) {
                path_.member(field.name, [&] { compare(field.type, in_a, in_b); });
            }
        }
    }

    // A count that the items do not show is compared as it stands.
    void compare_array(const tlvmsg_type *array, const void *a, const void *b) {
        const tlvmsg_items in_a = tlvmsg_items_of(array, a);
        const tlvmsg_items in_b = tlvmsg_items_of(array, b);
        if (in_a.count != in_a.readable || in_b.count != in_b.readable) {
            path_.member("count",
                         [&] { compare_texts(std::to_string(in_a.count), std::to_string(in_b.count)); });
        }
        if (tlvmsg_type_is_bytes(array) && in_a.readable + in_b.readable > 0) {
            return compare_whole(array, items_missing(in_a) ? nullptr : a, items_missing(in_b) ? nullptr : b);
        }
        const auto in = [&](const tlvmsg_items &items, size_t i) {
            return i < items.readable ? item_at(array, items, i) : nullptr;
        };
        for (size_t i = 0; i < std::max(in_a.readable, in_b.readable); ++i) {
            path_.item(i, [&] { compare(array->element, in(in_a, i), in(in_b, i)); });
        }
    }

    Path path_;
};

// The differences, and behind them their texts. Null for none.
tlvmsg_difference *new_differences(const std::vector<Difference> &found, std::string_view whole) {
    if (found.empty()) {
        return nullptr;
    }
    size_t size = found.size() * sizeof(tlvmsg_difference);
    for (const Difference &each : found) {
        size += std::max(each.path.size(), whole.size()) + each.a.size() + each.b.size() + 3;
    }
    auto *const block = static_cast<tlvmsg_difference *>(new_block(size));
    auto *next = reinterpret_cast<char *>(block + found.size());
    const auto add = [&](std::string_view text) { // must not throw: nobody has the block yet
        char *const start = next;
        next = std::copy(text.begin(), text.end(), start) + 1; // zero as the block is
        return start;
    };
    for (size_t i = 0; i < found.size(); ++i) {
        const Difference &each = found[i];
        block[i] = {add(each.path.empty() ? whole : std::string_view(each.path)),
                    each.a.empty() ? nullptr : add(each.a),
                    each.b.empty() ? nullptr : add(each.b),
                    {}};
    }
    return block;
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_diff(const tlvmsg_type *type, const void *a, const void *b, tlvmsg_difference **differences,
                 size_t *count, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    return Call(fault)
        .needs("type", type)
        .needs("a", a)
        .needs("b", b)
        .hands_out("differences", differences)
        .hands_out("count", count)
        .run([&] {
            Comparison comparison;
            comparison.compare(type, a, b);
            *differences = new_differences(comparison.found, type->name);
            *count = comparison.found.size();
        });
}
