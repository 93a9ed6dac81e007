// Fast paths change nothing but the time: every type goes through the shipped codecs and through the same
// codecs without fast paths, on valid and on damaged input, and results, records and untouched bytes must be
// equal.
#include "inspect/samples.h"

#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/record.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstring>
#include <vector>

namespace tlvmsg_test {

namespace {

constexpr uint8_t untouched = 0xA5;

void *tolerant_library() {
    static void *const library = dlopen(TOLERANT_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << dlerror();
    return library;
}

struct Both {
    explicit Both(const tlvmsg_type &type)
        : fast(find_codec(type)), plain(find_codec(type, tolerant_library())) {}

    Codec fast;
    Codec plain;
};

// Decodes into a record full of a pattern, so that a byte that only one of them stores shows. Records with
// pointers start as zero instead, and are compared by what they say.
struct Decoded {
    Decoded(const tlvmsg_type &decoded_type, const Codec &codec, const uint8_t *in)
        : type(decoded_type),
          storage((type.size + 15) / 8, pattern(holds(type, is_dynamic) ? 0 : untouched)) {
        const uint8_t *at = codec.decode(in, record());
        end = at == nullptr ? -1 : at - in;
    }
    ~Decoded() {
        if (holds(type, is_dynamic)) {
            release(type, record());
        }
    }
    Decoded(const Decoded &) = delete;
    Decoded &operator=(const Decoded &) = delete;

    static uint64_t pattern(uint8_t byte) { return byte * UINT64_C(0x0101010101010101); }
    uint8_t *record() { return reinterpret_cast<uint8_t *>(storage.data()); }

    const tlvmsg_type &type;
    std::vector<uint64_t> storage;
    ptrdiff_t end;
};

void expect_same_decoding(const tlvmsg_type &type, const Both &codecs, const uint8_t *in) {
    Decoded fast(type, codecs.fast, in);
    Decoded plain(type, codecs.plain, in);
    ASSERT_EQ(fast.end, plain.end) << type.name;
    if (holds(type, is_dynamic)) {
        ASSERT_TRUE(tlvmsg_equal(&type, fast.record(), plain.record())) << type.name;
    } else {
        ASSERT_EQ(fast.storage, plain.storage) << type.name;
    }
}

void expect_same_encoding(const tlvmsg_type &type, const Both &codecs, const uint8_t *record) {
    const uint16_t size = codecs.fast.size(record);
    ASSERT_EQ(size, codecs.plain.size(record)) << type.name;
    GuardedBuffer fast(size);
    GuardedBuffer plain(size);
    ASSERT_EQ(codecs.fast.encode(record, fast.data()), fast.end()) << type.name;
    ASSERT_EQ(codecs.plain.encode(record, plain.data()), plain.end()) << type.name;
    ASSERT_EQ(std::memcmp(fast.data(), plain.data(), size), 0) << type.name;
}

// Damage of any kind, lengths included. What an element of fixed size announces falls within the zero bytes
// behind the input, and nothing in it is a count, so that any of it may be decoded.
class AnyDamage {
public:
    explicit AnyDamage(const Bytes &valid) : input_(valid.size() + size_t{4} * 65536), size_(valid.size()) {
        std::copy(valid.begin(), valid.end(), input_.begin());
    }

    const uint8_t *damaged(std::mt19937_64 &random) {
        for (uint64_t changes = 1 + random() % 3; changes > 0; --changes) {
            uint8_t *at = input_.data() + random() % size_;
            switch (random() % 4) {
            case 0:
                *at = static_cast<uint8_t>(random());
                break;
            case 1:
                *at ^= static_cast<uint8_t>(1 << random() % 8);
                break;
            case 2: // bytes are missing
                std::memmove(at, at + 1 + random() % 12, static_cast<size_t>(12 + random() % 200));
                break;
            default: // bytes are there twice
                std::memmove(at + 1 + random() % 12, at, static_cast<size_t>(12 + random() % 200));
            }
        }
        return input_.data();
    }

private:
    Bytes input_;
    size_t size_;
};

class Family : public testing::TestWithParam<std::string> {};

TEST_P(Family, EncodesAndDecodesTheSameWithAndWithoutFastPaths) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        const Both codecs(type);
        for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
            const Sample sample(type, seed, counts, choice, untouched);
            const Bytes bytes = sample.encoded();
            if (bytes.empty()) {
                return;
            }
            if (!holds(type, is_dynamic_bytes)) { // these send what lies in the record, which differs from
                                                  // one to the next
                expect_same_encoding(type, codecs, sample.record());
            }
            if (type.kind != TLVMSG_UNION) { // these go by what the record holds
                expect_same_decoding(type, codecs, bytes.data());
            }
        });
    });
}

TEST_P(Family, ToleratesDamageTheSameWithAndWithoutFastPaths) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        if (type.kind == TLVMSG_UNION) {
            return;
        }
        const Both codecs(type);
        std::mt19937_64 random(type.tag + type.max_encoded);
        for_each_valid(type, [&](const Bytes &valid) {
            const bool fixed = type.min_encoded == type.max_encoded;
            const Mutator mutator(type, valid);
            for (int i = 0; i < 20; ++i) {
                if (fixed) {
                    AnyDamage any(valid);
                    expect_same_decoding(type, codecs, any.damaged(random));
                } else if (const Bytes mutated = mutator.mutated(random);
                           tlvmsg_verify(&type, mutated.data(), mutated.size(), nullptr, nullptr, nullptr)) {
                    expect_same_decoding(type, codecs, mutated.data());
                }
                if (testing::Test::HasFatalFailure()) {
                    return;
                }
            }
        });
    });
}

// Scalars, the family without a name, have no fast path.
std::vector<std::string> families_with_codecs() {
    std::vector<std::string> names = families();
    std::erase(names, "");
    return names;
}

INSTANTIATE_TEST_SUITE_P(Schema, Family, testing::ValuesIn(families_with_codecs()),
                         [](const auto &instance) { return instance.param; });

} // namespace

} // namespace tlvmsg_test
