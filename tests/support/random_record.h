// Records of any type with random content, the same for the same seed.
#pragma once

#include <tlvmsg/types.h>

#include <random>

namespace tlvmsg_test {

// How many items arrays get. Dynamic arrays have a capacity here too, so that records stay small.
enum class Counts { Zero, One, Capacity, Random };

// The exact encoder of a dynamic byte array reads the record itself from its pointer onward, and may thereby
// leave it: so many bytes behind a record that holds such an array must be readable.
inline constexpr uint32_t readable_behind_record = 320;

// Selector values worth trying: all that choose an alternative of some union in the type, and one that
// chooses none. 1 where there is no union.
uint32_t choices(const tlvmsg_type &type);

class RandomRecord {
public:
    // Every union gets its selector value number `choice`, counted through its alternatives, and starting
    // again behind the one that chooses none.
    RandomRecord(uint64_t seed, Counts counts, uint32_t choice)
        : random_(seed), counts_(counts), choice_(choice) {}

    // Sets what the record says and no other byte: items up to the count, the chosen alternative. Blocks are
    // from tlv_calloc.
    void fill(const tlvmsg_type &type, uint8_t *record);

private:
    void fill_bytes(uint8_t *at, uint64_t count);
    void fill_items(const tlvmsg_type &item, uint8_t *items, uint64_t count);
    void fill_bounded(const tlvmsg_type &array, uint8_t *record);
    void fill_dynamic(const tlvmsg_type &array, uint8_t *record);
    void fill_union(const tlvmsg_type &type, uint8_t *record);
    uint64_t count_up_to(uint64_t capacity);

    std::mt19937_64 random_;
    Counts counts_;
    uint32_t choice_;
};

} // namespace tlvmsg_test
