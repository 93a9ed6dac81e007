#include "compiler/model/fingerprint.h"

#include "compiler/model/attributes.h"
#include "compiler/model/references.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

class Bytes {
public:
    std::vector<uint8_t> bytes;

    // The least significant byte first.
    void add(uint64_t number, size_t width) {
        for (size_t i = 0; i < width; ++i) {
            bytes.push_back(static_cast<uint8_t>(number >> 8 * i));
        }
    }
    void add_type(const Type &type) { add(type.fingerprint, 8); }

    // By the flags that descriptors have for them.
    void add_attributes(const Attributes &attributes) {
        uint32_t flags = 0;
        for (const Attribute *each : attributes) {
            flags |= each->flag;
        }
        add(flags, 1);
    }

    void add_members(const Type &type) {
        for (const Member &each : type.members) {
            add_attributes(each.attributes);
            add_type(*each.type);
        }
    }

    void add_items(const Type &array) {
        add(array.capacity, 4);
        add(array.count->tag, 2);
        add_type(*array.element);
    }

    // By their values, so that the order in which they are declared does not show.
    void add_alternatives(const Type &type) {
        add_type(*type.selector);
        using Sorted = std::pair<std::vector<uint32_t>, const Alternative *>;
        std::vector<Sorted> alternatives;
        for (const Alternative &each : type.alternatives) {
            alternatives.emplace_back(each.values, &each);
            std::ranges::sort(alternatives.back().first);
        }
        // Vectors of numbers are compared wrongly by operator< of g++ 12 on big-endian machines.
        std::ranges::sort(alternatives, std::ranges::lexicographical_compare, &Sorted::first);
        for (const auto &[values, alternative] : alternatives) {
            add(values.size(), 4);
            for (const uint32_t value : values) {
                add(value, 4);
            }
            add_attributes(alternative->attributes);
            add_type(*alternative->type);
        }
    }
};

// FNV-1a.
uint64_t hash(const std::vector<uint8_t> &bytes) {
    uint64_t result = 0xCBF29CE484222325;
    for (const uint8_t byte : bytes) {
        result = (result ^ byte) * 0x100000001B3;
    }
    return result;
}

} // namespace

std::vector<uint8_t> fingerprinted_bytes(const Type &type) {
    Bytes result;
    result.add(static_cast<uint64_t>(type.kind), 1);
    result.add(type.tag, 2);
    if (has_members(type)) {
        result.add_members(type);
    } else if (is_array(type)) {
        result.add_items(type);
    } else if (type.kind == Kind::Union) {
        result.add_alternatives(type);
    }
    return result.bytes;
}

void take_fingerprints(Schema &schema) {
    for (Type &type : schema.types) {
        if (type.scalar != nullptr) {
            type.fingerprint = hash(fingerprinted_bytes(type));
        }
    }
    for (Type *const type : bottom_up(schema.types)) {
        type->fingerprint = hash(fingerprinted_bytes(*type));
    }
}

std::string spelled_fingerprint(const Type &type) { return fmt::format("0x{:016X}", type.fingerprint); }

} // namespace tlvc
