// What the C++ headers say about every record, against its descriptor.
#include "support/random_record.h"
#include "support/record.h"

#include <tlvmsg/all.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tlvmsg_test {

namespace {

struct Seen {
    std::string name;
    const tlvmsg_type *type;
    size_t offset;
    size_t size;

    bool operator==(const Seen &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Seen &seen) {
    return out << seen.name << ": " << seen.type->name << " at " << seen.offset;
}

// Lists the members of a record, or the items of an array.
struct Listing {
    const uint8_t *record;
    std::vector<Seen> seen;

    template <class T>
    void operator()(std::string_view name, const tlvmsg_type &type, const T &member) {
        add(name, type, &member, sizeof member);
    }

    void add(std::string_view name, const tlvmsg_type &type, const void *member, size_t size) {
        const auto at = static_cast<size_t>(static_cast<const uint8_t *>(member) - record);
        seen.push_back({std::string(name), &type, at, size});
    }
};

void add_chosen(const tlvmsg_type &union_type, const void *record, std::vector<Seen> &expected) {
    if (const tlvmsg_alternative *chosen = tlvmsg_chosen_in(&union_type, record)) {
        expected.push_back({chosen->name, chosen->type, chosen->offset, chosen->type->size});
    }
}

std::vector<Seen> members_of(const tlvmsg_type &type, const void *record) {
    std::vector<Seen> expected;
    if (type.kind == TLVMSG_UNION) {
        expected.push_back({type.selector_name, type.selector, type.selector_offset, type.selector->size});
        add_chosen(type, record, expected);
    }
    for (uint32_t i = 0; i < type.member_count; ++i) {
        const tlvmsg_member &member = type.members[i];
        if (member.path[0] == '\0') {
            add_chosen(*member.type, record, expected);
        } else if ((member.flags & TLVMSG_SHARED_WITH_NEXT) == 0) {
            expected.push_back({member.path, member.type, member.offset, member.type->size});
        }
    }
    return expected;
}

struct Known {
    const char *name;
    const tlvmsg_type &type;
    tlvmsg_kind kind;
    bool holds_blocks;
    size_t max_encoded;
    void (*list)(const void *record, Listing &listing);
};

template <class T>
Known known(const char *name) {
    using traits = tlvmsg::traits<T>;
    return {name,
            traits::type(),
            traits::kind,
            traits::holds_blocks,
            traits::max_encoded,
            [](const void *record, Listing &listing) {
                const T &typed = *static_cast<const T *>(record);
                if constexpr (tlvmsg::array_type<T>) {
                    const auto items = tlvmsg::detail::readable(typed);
                    listing.seen.push_back({"", traits::type().element, items.size(), sizeof items[0]});
                    listing.record = reinterpret_cast<const uint8_t *>(items.data());
                } else {
                    tlvmsg::visit(typed, listing);
                }
            }};
}

void check(const Known &known, uint32_t choice) {
    std::vector<uint64_t> room((known.type.size + readable_behind_record) / sizeof(uint64_t) + 1);
    auto *const record = reinterpret_cast<uint8_t *>(room.data());
    RandomRecord(choice, Counts::Random, choice).fill(known.type, record);
    Listing listing{record, {}};
    known.list(record, listing);
    if (known.type.element != nullptr) {
        const tlvmsg_items there = tlvmsg_items_of(&known.type, record);
        EXPECT_EQ(listing.record, there.first);
        EXPECT_EQ(listing.seen.at(0), (Seen{"", known.type.element, static_cast<size_t>(there.readable),
                                            known.type.element->size}));
    } else {
        EXPECT_EQ(listing.seen, members_of(known.type, record));
    }
    tlvmsg_release(&known.type, record);
}

void check(const Known &known) {
    SCOPED_TRACE(known.name);
    ASSERT_STREQ(known.type.name, known.name);
    EXPECT_EQ(known.kind, known.type.kind);
    EXPECT_EQ(known.max_encoded, known.type.max_encoded);
    EXPECT_EQ(known.holds_blocks, holds(known.type, is_dynamic));
    for (uint32_t choice = 0; choice < choices(known.type); ++choice) {
        check(known, choice);
    }
}

TEST(Traits, SayWhatDescriptorsSay) {
#define CHECK(X, RECORD) check(known<RECORD>(#X));
#include "typed_records.inc"
}

} // namespace

} // namespace tlvmsg_test
