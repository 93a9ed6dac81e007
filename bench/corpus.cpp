#include "corpus.h"

#include "support/random_record.h"
#include "support/record.h"

#include <tlvmsg/record.h>
#include <tlvmsg/runtime.h>

#include <cstring>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>

namespace tlvmsg_bench {

namespace {

using namespace tlvmsg_test;

constexpr size_t line = 64;

// The blocks of a record; `offset` is where the part of the given type begins in it.
void find_blocks(const tlvmsg_type &type, const uint8_t *record, size_t offset, std::vector<Block> &blocks) {
    const uint8_t *part = record + offset;
    for (uint32_t i = 0; i < type.member_count; ++i) {
        find_blocks(*type.members[i].type, record, offset + type.members[i].offset, blocks);
    }
    if (is_dynamic(type)) {
        const uint64_t count = tlvmsg_load(&type, part);
        const size_t terminator = type.kind == TLVMSG_DYNAMIC_BYTES ? 1 : 0;
        blocks.push_back({offset + type.items_offset, count * type.element->size + terminator});
        for_each_type(*type.element, [&](const tlvmsg_type &inner) {
            if (is_dynamic(inner)) {
                throw std::logic_error(std::string(type.name) + ": blocks in blocks are not foreseen");
            }
        });
    } else if (type.kind == TLVMSG_ELEMENT_ARRAY) {
        const uint64_t count = tlvmsg_load(&type, part);
        for (uint64_t i = 0; i < count; ++i) {
            find_blocks(*type.element, record, offset + type.items_offset + i * type.element->size, blocks);
        }
    } else if (type.kind == TLVMSG_UNION) {
        if (const tlvmsg_alternative *chosen = tlvmsg_chosen_in(&type, part)) {
            find_blocks(*chosen->type, record, offset + chosen->offset, blocks);
        }
    }
}

// Arrays of up to 8 bytes are hardware addresses and the like, which fill them; with any other count most of
// the time goes into branches that nobody can predict.
void fill_addresses(const tlvmsg_type &type, uint8_t *record) {
    for (uint32_t i = 0; i < type.member_count; ++i) {
        fill_addresses(*type.members[i].type, record + type.members[i].offset);
    }
    if (type.kind == TLVMSG_BYTE_ARRAY && type.capacity <= 8) {
        tlvmsg_store(&type, record, type.capacity);
    } else if (type.kind == TLVMSG_ELEMENT_ARRAY || type.kind == TLVMSG_DYNAMIC_ELEMENTS) {
        const tlvmsg_items items = tlvmsg_items_of(&type, record);
        for (uint64_t i = 0; i < items.count; ++i) {
            fill_addresses(*type.element, items.first + i * type.element->size);
        }
    } else if (type.kind == TLVMSG_UNION) {
        if (const tlvmsg_alternative *chosen = tlvmsg_chosen_in(&type, record)) {
            fill_addresses(*chosen->type, record + chosen->offset);
        }
    }
}

void check(const Sample &sample) {
    const bool whole = sample.codec.decode(sample.wire, sample.decoded) == sample.wire + sample.wire_size;
    const bool same = holds(*sample.type, is_dynamic_bytes) || // the exact encoder sends their pointers
                      tlvmsg_equal(sample.type, sample.record, sample.decoded);
    if (!whole || !same) {
        throw std::logic_error(std::string(sample.type->name) + ": decodes to something else");
    }
    release(sample);
}

} // namespace

void release(const Sample &sample) {
    for (const Block &block : sample.blocks) {
        void *items;
        std::memcpy(&items, sample.decoded + block.offset, sizeof items);
        tlv_free(items);
    }
}

Corpus::Corpus() {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type *type = tlvmsg_type_at(i);
        if (type->kind != TLVMSG_SCALAR) {
            samples_.push_back({type, find_codec(*type), nullptr, nullptr, 0, nullptr, nullptr, {}});
        }
    }
    RandomRecord random(1, Counts::Random, 0);
    for (Sample &sample : samples_) {
        uint8_t *record = allocate(sample.type->size + readable_behind_record);
        random.fill(*sample.type, record);
        fill_addresses(*sample.type, record);
        sample.record = record;
        find_blocks(*sample.type, record, 0, sample.blocks);
    }
    for (Sample &sample : samples_) {
        uint8_t *wire = allocate(sample.type->max_encoded);
        sample.wire = wire;
        sample.wire_size = static_cast<size_t>(sample.codec.encode(sample.record, wire) - wire);
    }
    for (Sample &sample : samples_) {
        sample.out = allocate(sample.wire_size);
    }
    for (Sample &sample : samples_) {
        sample.decoded = allocate(sample.type->size);
        if (sample.type->kind == TLVMSG_UNION) { // its decoder goes by the selector, and does not store one
            const uint32_t selector = sample.type->selector_offset;
            std::memcpy(sample.decoded + selector, sample.record + selector, sizeof(uint32_t));
        }
        check(sample);
    }
}

size_t Corpus::wire_bytes() const {
    return std::accumulate(samples_.begin(), samples_.end(), size_t{0},
                           [](size_t sum, const Sample &each) { return sum + each.wire_size; });
}

uint8_t *Corpus::allocate(size_t size) {
    memory_.push_back(std::make_unique<uint8_t[]>(size + line));
    void *start = memory_.back().get();
    size_t space = size + line;
    return static_cast<uint8_t *>(std::align(line, size, start, space));
}

} // namespace tlvmsg_bench
