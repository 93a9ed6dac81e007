// The strict operations of a type, as its descriptor refers to them.
//
// They accept flawless input only, and records that can be encoded. At anything else they give up without saying why.
// Their callers then go by the descriptors, which say what is tolerated and what the fault is.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tlvmsg {

// No encoding is larger.
inline constexpr uint64_t largest_size = UINT32_MAX;

// What a strict operation reads, and what it allocates meanwhile.
struct Input {
    const uint8_t *end;
    size_t limit; // bytes of all blocks together
    size_t allocated = 0;
    size_t blocks = 0;
    bool out_of_memory = false; // whether there was no memory for the last block
    bool terminated = true;     // whether zero bytes behind bytes are looked at: exact decoders skip them

    size_t left(const uint8_t *in) const { return static_cast<size_t>(end - in); }

    // Counts one more block if it is within the limits, and says whether it is.
    bool allow(uint64_t size) {
        if (size > UINT32_MAX || size > limit - allocated) {
            return false;
        }
        allocated += static_cast<size_t>(size);
        ++blocks;
        return true;
    }
};

} // namespace tlvmsg

// How generated descriptors refer to the operations of the type; those that stand alone refer to none.
#ifdef TLVMSG_DESCRIPTORS_ALONE
#define TLVMSG_OPERATIONS_OF(NAME) nullptr
#else
#define TLVMSG_OPERATIONS_OF(NAME) &NAME
#endif

// Defines the descriptor of a type, aligned no more than it has to be: g++ would pad it to 32 bytes. Programs share its
// address. It is protected, so that references inside the library are bound to it.
#define TLVMSG_TYPE_OBJECT(X)                                                                                \
    extern __attribute__((visibility("protected"))) const tlvmsg_type tlvmsg_type_of_##X;                    \
    alignas(tlvmsg_type) const tlvmsg_type tlvmsg_type_of_##X

struct tlvmsg_operations {
    uint32_t fixed_size; // encoded size in bytes, 0 when it depends on the record
    bool allocates;      // whether a decoded record may hold blocks

    // The position behind the encoding, or null. Every byte of the record is written; after null what it
    // holds is of use only to release the blocks that the input counts.
    const uint8_t *(*decode)(const uint8_t *in, tlvmsg::Input *input, void *record);
    const uint8_t *(*verify)(const uint8_t *in, tlvmsg::Input *input);

    // The position behind what was written, or null with nothing written.
    uint8_t *(*encode)(const void *record, uint8_t *out, size_t capacity);

    // Above largest_size when the record cannot be encoded.
    uint64_t (*size)(const void *record);
};
