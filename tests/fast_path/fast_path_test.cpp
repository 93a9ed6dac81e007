// Fast paths change nothing but the time: types of fixed size, and dynamic arrays of these, go through the shipped codecs
// and through the same codecs without fast paths, on damage of any kind, and results, records, blocks and untouched bytes
// must be equal. (What the bounded library accepts, of any type, tests of properties hold against that.)
#include "inspect/samples.h"

#include "support/codec_table.h"
#include "support/record.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstring>
#include <vector>

namespace tlvmsg_test {

namespace {

constexpr uint64_t untouched = 0xA5A5A5A5A5A5A5A5;

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

bool is_variable(const tlvmsg_type &type) {
    return type.kind == TLVMSG_UNION || (is_array(type) && type.kind != TLVMSG_DYNAMIC_ELEMENTS);
}

// Decodes into a record full of a pattern, so that a byte that only one of them stores shows, or, if it gets a pointer,
// of zero bytes.
struct Decoded {
    Decoded(const tlvmsg_type &of, const Codec &codec, const uint8_t *in)
        : type(of), storage((of.size + 15) / 8, holds(of, is_dynamic) ? 0 : untouched) {
        const uint8_t *at = codec.decode(in, record());
        end = at == nullptr ? -1 : at - in;
    }
    ~Decoded() {
        if (holds(type, is_dynamic)) {
            tlvmsg_release(&type, record());
        }
    }
    Decoded(const Decoded &) = delete;
    Decoded &operator=(const Decoded &) = delete;

    uint8_t *record() { return reinterpret_cast<uint8_t *>(storage.data()); }

    const tlvmsg_type &type;
    std::vector<uint64_t> storage;
    ptrdiff_t end;
};

void expect_same_decoding(const tlvmsg_type &type, const Both &codecs, const uint8_t *in) {
    Decoded fast(type, codecs.fast, in);
    Decoded plain(type, codecs.plain, in);
    ASSERT_EQ(fast.end, plain.end) << type.name;
    ASSERT_TRUE(holds(type, is_dynamic) ? tlvmsg_equal(&type, fast.record(), plain.record())
                                        : fast.storage == plain.storage)
        << type.name;
}

// Damage of any kind, lengths included. What an element of fixed size announces falls within the zero bytes
// behind the input, and nothing in it is a count but those that blocks are allocated by, so that any of it may be decoded.
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

TEST_P(Family, ToleratesDamageTheSameWithAndWithoutFastPaths) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        if (type.kind == TLVMSG_UNION || (type.min_encoded != type.max_encoded && holds(type, is_variable))) {
            return;
        }
        const Both codecs(type);
        std::mt19937_64 random(type.tag + type.max_encoded);
        for_each_valid(type, [&](const Bytes &valid) {
            for (int i = 0; i < 20 && !testing::Test::HasFatalFailure(); ++i) {
                AnyDamage any(valid);
                expect_same_decoding(type, codecs, any.damaged(random));
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
