// Encodings to try: valid ones of every shape a type has, and damaged ones.
#pragma once

#include "support/hex.h"
#include "support/random_record.h"

#include <tlvmsg/inspect.h>

#include <functional>
#include <random>
#include <vector>

namespace tlvmsg_test {

// A record with random content, released with it. What the content does not set has `background`.
class Sample {
public:
    Sample(const tlvmsg_type &type, uint64_t seed, Counts counts, uint32_t choice, uint8_t background = 0);
    ~Sample();
    Sample(const Sample &) = delete;
    Sample &operator=(const Sample &) = delete;

    uint8_t *record() const { return record_; }

    // Empty, with *fault saying why, when the record cannot be encoded.
    Bytes encoded(tlvmsg_fault *fault = nullptr) const;

private:
    const tlvmsg_type &type_;
    std::vector<uint64_t> storage_; // aligned for every record
    uint8_t *record_;
};

// Every type in turn that belongs to the family, or, for "", the scalars.
void for_each_type_of(const std::string &family, const std::function<void(const tlvmsg_type &)> &visit);
std::vector<std::string> families();

// A sample for each way to count and each alternative; equal seeds give equal samples.
void for_each_sample(const tlvmsg_type &type,
                     const std::function<void(uint64_t seed, Counts counts, uint32_t choice)> &visit);

// The encodings of these, apart from those that are too long to have one.
void for_each_valid(const tlvmsg_type &type, const std::function<void(const Bytes &)> &visit);

// Changes one to three things that matter in a valid encoding: tags, lengths, counts, values, elements that
// are missing or there twice.
class Mutator {
public:
    Mutator(const tlvmsg_type &type, const Bytes &valid);
    Bytes mutated(std::mt19937_64 &random) const;

private:
    std::vector<tlvmsg_piece> pieces_;
    Bytes valid_;
};

} // namespace tlvmsg_test
