#include "forms/types/type_index.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace tlvmsg::forms {

namespace {

// By tag; types of one tag, as arrays are, stay apart.
bool member_before(const tlvmsg_member &a, const tlvmsg_member &b) {
    const uint16_t tag_a = tlvmsg_type_tag_read(a.type);
    const uint16_t tag_b = tlvmsg_type_tag_read(b.type);
    return tag_a != tag_b ? tag_a < tag_b : std::less<>()(a.type, b.type);
}

bool members_before(const tlvmsg_type *a, const tlvmsg_type *b) {
    return std::lexicographical_compare(a->members, a->members + a->member_count, b->members,
                                        b->members + b->member_count, member_before);
}

// Those that have the tag which is there, of types that are sorted by what `tag_of` gives.
template <class TagOf>
Types of_tag(Types types, Bytes bytes, TagOf tag_of) {
    if (bytes.size() < tag_size) {
        return {};
    }
    const uint16_t tag = number_at(bytes, 0);
    return {std::ranges::lower_bound(types, tag, {}, tag_of),
            std::ranges::upper_bound(types, tag, {}, tag_of)};
}

// All of these messages have the same first `depth` members, whose elements end at `at`.
void follow(Types types, uint32_t depth, Bytes bytes, size_t at, const tlvmsg_type_set::Found &found) {
    const auto longer =
        std::ranges::partition_point(types, [&](const auto *type) { return type->member_count == depth; });
    if (depth > 0 && longer != types.begin()) {
        found({types.begin(), longer}, depth, at);
    }
    types = {longer, types.end()};
    const auto member_of = [&](const tlvmsg_type *type) { return type->members[depth].type; };
    const Bytes rest = bytes.subspan(at);
    Types right =
        of_tag(types, rest, [&](const auto *type) { return tlvmsg_type_tag_read(member_of(type)); });
    if (right.empty() && depth > 0 && !types.empty()) {
        found(types, depth, at);
    }
    while (!right.empty()) {
        const tlvmsg_type *const member = member_of(right.front());
        const auto same =
            std::ranges::partition_point(right, [&](const auto *type) { return member_of(type) == member; });
        const size_t size = size_by_header(member, rest);
        if (size > rest.size()) {
            found({right.begin(), same}, depth, at);
        } else {
            follow({right.begin(), same}, depth + 1, bytes, at + size, found);
        }
        right = {same, right.end()};
    }
}

// The number that bytes have where the message has its key; nothing where either has none.
std::optional<uint32_t> key_in(Bytes bytes, const tlvmsg_type *message) {
    // What an enumeration has before its value: its length, and the header of the number in it.
    constexpr uint8_t before[] = {0, enumeration_length, 0, enumerator_tag, 0, enumerator_width};
    tlvmsg_key_place place;
    if ((message->flags & TLVMSG_HAS_KEY) == 0 || !tlvmsg_key_field(message, &place) ||
        bytes.size() < place.encoded_offset + sizeof message->key) {
        return std::nullopt;
    }
    const Bytes number = bytes.subspan(place.encoded_offset);
    const bool there = std::equal(std::begin(before), std::end(before), number.data() - sizeof before);
    return there ? std::optional(uint32_t{number_at(number, 0)} << 16 | number_at(number, 2)) : std::nullopt;
}

} // namespace

} // namespace tlvmsg::forms

using namespace tlvmsg::forms;

tlvmsg_type_set::tlvmsg_type_set(std::vector<const tlvmsg_type *> sorted) : by_name(std::move(sorted)) {
    for (const tlvmsg_type *type : by_name) {
        if (type->kind == TLVMSG_MESSAGE) {
            messages.push_back(type);
            keys.insert(keys.end(), (type->flags & TLVMSG_HAS_KEY) != 0 ? 1 : 0, type->key);
        } else if (type->kind != TLVMSG_UNION) {
            elements.push_back(type);
            by_tag.insert(by_tag.end(), type->element == nullptr ? 1 : 0, type);
        }
    }
    std::ranges::stable_sort(by_tag, {}, &tlvmsg_type::tag);
    std::ranges::stable_sort(elements, {}, tlvmsg_type_tag_read);
    std::ranges::stable_sort(messages, members_before);
    std::ranges::sort(keys);
}

Types tlvmsg_type_set::beginning_like(Bytes bytes) const {
    return of_tag(elements, bytes, tlvmsg_type_tag_read);
}

bool tlvmsg_type_set::has_message_like(Bytes bytes) const {
    const auto first =
        std::ranges::partition_point(messages, [](const auto *type) { return type->member_count == 0; });
    return !of_tag({first, messages.end()}, bytes, [](const auto *type) {
                return tlvmsg_type_tag_read(type->members[0].type);
            }).empty();
}

void tlvmsg_type_set::follow_messages(Bytes bytes, const Found &found) const {
    follow(messages, 0, bytes, 0, found);
}

Keyed tlvmsg_type_set::by_key(Bytes bytes, Types alike) const {
    Keyed keyed;
    for (const tlvmsg_type *const message : alike) {
        const std::optional<uint32_t> key = key_in(bytes, message);
        const auto [first, last] = std::equal_range(keys.begin(), keys.end(), message->key);
        if (!key || (*key == message->key && last - first > 1)) {
            keyed.others.push_back(message);
        } else if (*key == message->key) {
            keyed.alone.push_back(message);
        }
    }
    return keyed;
}
