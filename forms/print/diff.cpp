// What differs between two records, member by member.
#include "forms/border/block.h"
#include "forms/border/call.h"
#include "forms/json/writer.h"
#include "forms/record/fields.h"

#include <tlvmsg/forms/diff.h>

#include <algorithm>
#include <vector>

namespace tlvmsg::forms {

namespace {

struct Difference {
    std::string path;
    std::string a, b; // empty where that record has nothing
};

// From the place up to the whole: each link outlives those below it.
class Path {
public:
    Path() = default;
    Path(const Path *parent, std::string_view name) : parent_(parent), name_(name) {}
    Path(const Path *parent, size_t index) : parent_(parent), index_(index) {}

    // Empty for the whole.
    std::string text() const {
        if (parent_ == nullptr) {
            return "";
        }
        const std::string above = parent_->text();
        return name_.empty() ? above + "[" + std::to_string(index_) + "]"
                             : above + (above.empty() ? "" : ".") + std::string(name_);
    }

private:
    const Path *parent_ = nullptr;
    std::string_view name_; // empty for an item
    size_t index_ = 0;
};

class Comparison {
public:
    // A null record is one that is not there.
    void compare(const tlvmsg_type *type, const void *a, const void *b, const Path &path) {
        if (a == nullptr || b == nullptr) {
            return compare_whole(type, a, b, path);
        }
        switch (type->kind) {
        case TLVMSG_STRUCTURE:
        case TLVMSG_MESSAGE:
        case TLVMSG_UNION:
            return compare_fields(type, a, b, path);
        case TLVMSG_ELEMENT_ARRAY:
        case TLVMSG_PACKED_ARRAY:
        case TLVMSG_DYNAMIC_ELEMENTS:
        case TLVMSG_BYTE_ARRAY:
        case TLVMSG_DYNAMIC_BYTES:
            return compare_array(type, a, b, path);
        case TLVMSG_SCALAR:
        case TLVMSG_ENUMERATION:
            return compare_whole(type, a, b, path);
        }
    }

    std::vector<Difference> found;

private:
    void compare_whole(const tlvmsg_type *type, const void *a, const void *b, const Path &path) {
        const auto text = [&](const void *record) { return record != nullptr ? json_of(type, record) : ""; };
        compare_texts(text(a), text(b), path);
    }

    void compare_texts(std::string a, std::string b, const Path &path) {
        if (a != b) {
            found.push_back({path.text(), std::move(a), std::move(b)});
        }
    }

    // In a union, what either of them has chosen is compared.
    void compare_fields(const tlvmsg_type *type, const void *a, const void *b, const Path &path) {
        const auto in = [](const tlvmsg_field &field, const void *record) {
            const bool there = field.alternative == nullptr ||
                               field.alternative == tlvmsg_chosen_in(field.union_type, record);
            return there ? at_offset(record, field.offset) : nullptr;
        };
        for (tlvmsg_field field{}; tlvmsg_next_field(type, nullptr, &field);) {
            const void *const in_a = in(field, a);
            const void *const in_b = in(field, b);
            if (in_a != nullptr || in_b != nullptr) {
                compare(field.type, in_a, in_b, Path(&path, field.name));
            }
        }
    }

    // A count that the items do not show is compared as it stands.
    void compare_array(const tlvmsg_type *array, const void *a, const void *b, const Path &path) {
        const tlvmsg_items in_a = tlvmsg_items_of(array, a);
        const tlvmsg_items in_b = tlvmsg_items_of(array, b);
        if (in_a.count != in_a.readable || in_b.count != in_b.readable) {
            compare_texts(std::to_string(in_a.count), std::to_string(in_b.count), Path(&path, "count"));
        }
        if (tlvmsg_type_is_bytes(array) && in_a.readable + in_b.readable > 0) {
            return compare_whole(array, items_missing(in_a) ? nullptr : a, items_missing(in_b) ? nullptr : b,
                                 path);
        }
        for (size_t i = 0; i < std::max(in_a.readable, in_b.readable); ++i) {
            compare(array->element, i < in_a.readable ? item_at(array, in_a, i) : nullptr,
                    i < in_b.readable ? item_at(array, in_b, i) : nullptr, Path(&path, i));
        }
    }
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
            comparison.compare(type, a, b, Path());
            *differences = new_differences(comparison.found, type->name);
            *count = comparison.found.size();
        });
}
