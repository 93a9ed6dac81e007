#include "sample.h"

#include "forms/fields.h"

#include <algorithm>
#include <initializer_list>
#include <new>
#include <random>
#include <vector>

namespace tlvmsg::tool {

namespace {

using namespace forms;

constexpr uint64_t most_encoded_bytes = UINT16_MAX;
constexpr uint64_t header_bytes = 4;
constexpr uint64_t small_count = 32;

// The most bytes that a type needs while its dynamic arrays are empty, and how many of those it may hold.
struct Needs {
    uint64_t bytes;
    uint64_t dynamic_arrays;
};

Needs needs(const tlvmsg_type *type) {
    if (tlvmsg_type_is_dynamic(type)) {
        return {type->min_encoded, 1};
    }
    if (type->kind == TLVMSG_ELEMENT_ARRAY) {
        const Needs item = needs(type->element);
        return {type->min_encoded + type->capacity * item.bytes, type->capacity * item.dynamic_arrays};
    }
    if (type->member_count == 0 && type->alternative_count == 0) {
        return {type->max_encoded, 0};
    }
    Needs all{type->kind == TLVMSG_STRUCTURE ? header_bytes : 0, 0};
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const Needs member = needs(type->members[i].type);
        all = {all.bytes + member.bytes, all.dynamic_arrays + member.dynamic_arrays};
    }
    for (uint32_t i = 0; i < type->alternative_count; ++i) {
        const Needs alternative = needs(type->alternatives[i].type);
        all = {std::max(all.bytes, alternative.bytes),
               std::max(all.dynamic_arrays, alternative.dynamic_arrays)};
    }
    return all;
}

class Sampler {
public:
    Sampler(const tlvmsg_type *type, SampleKind kind, uint64_t seed) : kind_(kind), random_(seed) {
        const Needs rest = needs(type);
        const uint64_t left = most_encoded_bytes - std::min(rest.bytes, most_encoded_bytes);
        dynamic_share_ = rest.dynamic_arrays == 0 ? 0 : left / rest.dynamic_arrays;
    }

    void fill(const tlvmsg_type *type, void *record);

private:
    // Modulo, because the standard's distributions differ between libraries.
    uint64_t draw(uint64_t below) { return random_() % below; }
    uint64_t one_of(std::initializer_list<uint64_t> values) { return values.begin()[draw(values.size())]; }

    uint64_t number(const tlvmsg_type *type);
    uint64_t count(const tlvmsg_type *array);
    void fill_bytes(uint8_t *first, size_t count);
    void fill_array(const tlvmsg_type *array, void *record);
    void fill_union(const tlvmsg_type *type, void *record);

    const SampleKind kind_;
    std::mt19937_64 random_;
    uint64_t dynamic_share_; // bytes for the items of each dynamic array
};

uint64_t Sampler::number(const tlvmsg_type *type) {
    const auto least = static_cast<uint64_t>(tlvmsg_least(type));
    const uint64_t most = tlvmsg_most(type);
    switch (kind_) {
    case SampleKind::max:
        return most;
    case SampleKind::boundary:
        return one_of({least, least + 1, 0, 1, most - 1, most});
    default:
        return random_() >> draw(64); // small ones as often as large ones
    }
}

uint64_t Sampler::count(const tlvmsg_type *array) {
    uint64_t most = tlvmsg_most_items(array);
    if (tlvmsg_type_is_dynamic(array)) {
        most =
            std::min(most, dynamic_share_ / (tlvmsg_type_is_bytes(array) ? 1 : array->element->max_encoded));
    }
    switch (kind_) {
    case SampleKind::max:
        return most;
    case SampleKind::boundary:
        return one_of({0, std::min<uint64_t>(most, 1), most - std::min<uint64_t>(most, 1), most});
    default:
        return draw(std::min(most, small_count) + 1);
    }
}

// Text and bytes that are no text, and for the boundary the bytes next to where one becomes the other.
void Sampler::fill_bytes(uint8_t *first, size_t count) {
    const bool text = draw(2) == 0;
    std::generate_n(first, count, [&]() -> uint8_t {
        switch (kind_) {
        case SampleKind::max:
            return UINT8_MAX;
        case SampleKind::boundary:
            return static_cast<uint8_t>(text ? one_of({' ', '"', '\\', '~'}) : one_of({0, 0x1f, 0x7f, 0xff}));
        default:
            return static_cast<uint8_t>(text ? 'a' + draw(26) : random_());
        }
    });
}

void Sampler::fill_array(const tlvmsg_type *array, void *record) {
    const size_t total = count(array);
    if (!tlvmsg_resize(array, record, total, nullptr)) {
        throw std::bad_alloc(); // the count is none that does not fit
    }
    const tlvmsg_items items = tlvmsg_items_of(array, record);
    if (tlvmsg_type_is_bytes(array)) {
        return fill_bytes(items.first, total);
    }
    for (size_t i = 0; i < total; ++i) {
        fill(array->element, item_at(array, items, i));
    }
}

// Every value that chooses something is as likely as the next, and as none at all, unless much is wanted.
void Sampler::fill_union(const tlvmsg_type *type, void *record) {
    std::vector<uint32_t> values;
    for (uint32_t i = 0; i < type->alternative_count; ++i) {
        const tlvmsg_alternative &each = type->alternatives[i];
        values.insert(values.end(), each.values, each.values + each.value_count);
    }
    if (kind_ != SampleKind::max) {
        uint32_t none = UINT32_MAX;
        while (tlvmsg_chosen_by(type, none) != nullptr) {
            --none;
        }
        values.push_back(none);
    }
    tlvmsg_store(type->selector, at_offset(record, type->selector_offset), values[draw(values.size())]);
    if (const tlvmsg_alternative *alternative = tlvmsg_chosen_in(type, record)) {
        fill(alternative->type, at_offset(record, alternative->offset));
    }
}

void Sampler::fill(const tlvmsg_type *type, void *record) {
    switch (type->kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return tlvmsg_store(type, record, number(type));
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const tlvmsg_member &member = type->members[i];
            if ((member.flags & TLVMSG_SHARED_WITH_NEXT) == 0) {
                fill(member.type, at_offset(record, member.offset));
            }
        }
        return;
    case TLVMSG_UNION:
        return fill_union(type, record);
    default:
        return fill_array(type, record);
    }
}

} // namespace

Record make_sample(const tlvmsg_type *type, SampleKind kind, uint64_t seed) {
    Record record(type);
    if (kind != SampleKind::min) {
        Sampler(type, kind, seed).fill(type, record.data());
    }
    return record;
}

} // namespace tlvmsg::tool
