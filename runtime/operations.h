// The strict operations of a type, as its descriptor refers to them.
//
// They accept flawless input only, and records that can be encoded. At anything else they give up without saying why.
// Their callers then go by the descriptors, which say what is tolerated and what the fault is.
#pragma once

#include <tlvmsg/inspect.h>

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

// Stores a result where the caller has room for one.
template <class T>
void set_result(T *result, const T &value) {
    if (result != nullptr) {
        *result = value;
    }
}

// Fills no more of a fault than is defined when nothing was refused.
inline void set_success(tlvmsg_fault *fault) {
    if (fault != nullptr) {
        fault->code = TLVMSG_OK;
        fault->path[0] = '\0';
    }
}

// What goes on with a decoding that a strict operation gives up on.
using DecodeOtherwise = decltype(tlvmsg_decode);

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
    bool takes_call; // whether there is decode_call, as for messages that do not allocate, instead of decode

    union {
        // The position behind the encoding, or null. Every byte of the record is written; after null what it
        // holds is of use only to release the blocks that the input counts.
        const uint8_t *(*decode)(const uint8_t *in, tlvmsg::Input *input, void *record);

        // What tlvmsg_decode does without limits. It takes all arguments, so that tlvmsg_decode jumps here and keeps
        // none of them.
        bool (*decode_call)(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                            tlvmsg::DecodeOtherwise *otherwise, void *record, size_t *consumed,
                            tlvmsg_fault *fault);
    };
    const uint8_t *(*verify)(const uint8_t *in, tlvmsg::Input *input);

    // The position behind what was written, or null with nothing written.
    uint8_t *(*encode)(const void *record, uint8_t *out, size_t capacity);

    // Above largest_size when the record cannot be encoded.
    uint64_t (*size)(const void *record);

    // The same as decode, whichever there is.
    const uint8_t *accept(const uint8_t *in, tlvmsg::Input *input, void *record) const {
        if (!takes_call) {
            return decode(in, input, record);
        }
        const auto give_up = [](const tlvmsg_type *, const uint8_t *, size_t, const tlvmsg_limits *, void *,
                                size_t *, tlvmsg_fault *) { return false; };
        size_t consumed = 0;
        const bool accepted = decode_call(nullptr, in, input->left(in), give_up, record, &consumed, nullptr);
        return accepted ? in + consumed : nullptr;
    }
};
