// One random record of every type, with its bytes: the whole schema as work to measure.
#pragma once

#include "support/codec_table.h"

#include <tlvmsg/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tlvmsg_bench {

// A block that a decoder allocates: where in the record the pointer to it lies, and how many bytes it has.
struct Block {
    size_t offset;
    size_t size;
};

struct Sample {
    const tlvmsg_type *type;
    tlvmsg_test::Codec codec;
    const uint8_t *record;
    const uint8_t *wire;
    size_t wire_size;
    uint8_t *out;     // room for the wire bytes
    uint8_t *decoded; // room for the record
    std::vector<Block> blocks;
};

// Gives back what decoding the sample allocated.
void release(const Sample &sample);

// A sample of each enumeration, structure, message, array and union. Records, bytes and results lie in four
// places of their own, each sample at a cache line. Throws when what a type encodes it does not decode.
class Corpus {
public:
    Corpus();

    const std::vector<Sample> &samples() const { return samples_; }
    size_t wire_bytes() const;

private:
    uint8_t *allocate(size_t size);

    std::vector<std::unique_ptr<uint8_t[]>> memory_;
    std::vector<Sample> samples_;
};

} // namespace tlvmsg_bench
