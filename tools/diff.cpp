#include "diff.h"

#include "fields.h"
#include "json.h"
#include "json_place.h"

#include <algorithm>

namespace tlvmsg::tool {

namespace {

class Comparison {
public:
    // A null record is one that is not there.
    void compare(const tlvmsg_type *type, const void *a, const void *b, const JsonPlace &place) {
        if (a == nullptr || b == nullptr) {
            return compare_whole(type, a, b, place);
        }
        switch (type->kind) {
        case TLVMSG_STRUCTURE:
        case TLVMSG_MESSAGE:
            return compare_members(type, a, b, place);
        case TLVMSG_UNION:
            return compare_union(type, a, b, place);
        case TLVMSG_ELEMENT_ARRAY:
        case TLVMSG_PACKED_ARRAY:
        case TLVMSG_DYNAMIC_ELEMENTS:
            return compare_items(type, a, b, place);
        default:
            return compare_whole(type, a, b, place);
        }
    }

    std::vector<Difference> found;

private:
    void compare_whole(const tlvmsg_type *type, const void *a, const void *b, const JsonPlace &place) {
        const auto text = [&](const void *record) { return record ? to_json(type, record, -1) : ""; };
        Difference difference{place.text(), text(a), text(b)};
        if (difference.a != difference.b) {
            found.push_back(std::move(difference));
        }
    }

    void compare_members(const tlvmsg_type *type, const void *a, const void *b, const JsonPlace &place) {
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const tlvmsg_member &member = type->members[i];
            const void *const in_a = at_offset(a, member.offset);
            const void *const in_b = at_offset(b, member.offset);
            if (*member.path == '\0') {
                compare_alternatives(member.type, in_a, in_b, place);
            } else if ((member.flags & TLVMSG_SHARED_WITH_NEXT) == 0) {
                compare(member.type, in_a, in_b, JsonPlace(&place, member.path));
            }
        }
    }

    void compare_items(const tlvmsg_type *array, const void *a, const void *b, const JsonPlace &place) {
        const tlvmsg_items in_a = tlvmsg_items_of(array, a);
        const tlvmsg_items in_b = tlvmsg_items_of(array, b);
        if (items_missing(in_a) || items_missing(in_b)) {
            return compare_whole(array, a, b, place);
        }
        for (size_t i = 0; i < std::max(in_a.readable, in_b.readable); ++i) {
            compare(array->element, i < in_a.readable ? item_at(array, in_a, i) : nullptr,
                    i < in_b.readable ? item_at(array, in_b, i) : nullptr, JsonPlace(&place, i));
        }
    }

    void compare_union(const tlvmsg_type *type, const void *a, const void *b, const JsonPlace &place) {
        compare(type->selector, at_offset(a, type->selector_offset), at_offset(b, type->selector_offset),
                JsonPlace(&place, type->selector_name));
        compare_alternatives(type, a, b, place);
    }

    void compare_alternatives(const tlvmsg_type *type, const void *a, const void *b, const JsonPlace &place) {
        const tlvmsg_alternative *const in_a = tlvmsg_chosen_in(type, a);
        const tlvmsg_alternative *const in_b = tlvmsg_chosen_in(type, b);
        if (in_a != nullptr) {
            compare(in_a->type, at_offset(a, in_a->offset),
                    in_a == in_b ? at_offset(b, in_a->offset) : nullptr, JsonPlace(&place, in_a->name));
        }
        if (in_b != nullptr && in_b != in_a) {
            compare(in_b->type, nullptr, at_offset(b, in_b->offset), JsonPlace(&place, in_b->name));
        }
    }
};

} // namespace

std::vector<Difference> diff(const tlvmsg_type *type, const void *a, const void *b) {
    Comparison comparison;
    comparison.compare(type, a, b, JsonPlace());
    return std::move(comparison.found);
}

} // namespace tlvmsg::tool
