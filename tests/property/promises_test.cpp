// The promises hold for all types, whatever happens to their encodings on the way.
#include "inspect/promises.h"
#include "inspect/samples.h"
#include "support/record.h"

#include <gtest/gtest.h>

namespace tlvmsg_test {

namespace {

// One test a family: they share out over processes, and a failure says where to look.
class Promises : public testing::TestWithParam<std::string> {
protected:
    void for_each_sample(size_t largest,
                         const std::function<void(const tlvmsg_type &, Bench &, const Bytes &)> &visit) {
        for_each_type_of(GetParam(), [&](const tlvmsg_type &type) {
            for_each_valid(type, [&](const Bytes &valid) {
                if (valid.size() <= largest && !HasFailure()) {
                    Bench bench(type, 2 * valid.size() + 16, guard_ ? Guard::Behind : Guard::Before);
                    guard_ = !guard_;
                    visit(type, bench, valid);
                    ++samples_;
                }
            });
        });
        EXPECT_GT(samples_, 0u);
    }

private:
    bool guard_ = false;
    size_t samples_ = 0;
};

// A union by itself is decoded by selector 0, whatever chose the alternative. The decoder of char refuses
// what its encoder writes.
TEST_P(Promises, HoldForValidInput) {
    for_each_sample(SIZE_MAX, [](const tlvmsg_type &type, Bench &bench, const Bytes &valid) {
        const bool accepted = bench.check(valid);
        if (is_union(type) || (holds(type, is_char) && !is_char(type))) {
            return;
        }
        EXPECT_EQ(accepted, !is_char(type));
        if (accepted) {
            tlvmsg_extent extent;
            tlvmsg_verify(&type, valid.data(), valid.size(), nullptr, &extent, nullptr);
            EXPECT_EQ(extent.deviations, 0u) << extent.first_deviation.path;
            EXPECT_EQ(extent.consumed, valid.size()) << type.name;
        }
    });
}

TEST_P(Promises, HoldAtEveryLength) {
    for_each_sample(600, [](const tlvmsg_type &, Bench &bench, const Bytes &valid) {
        for (size_t length = 0; length < valid.size(); ++length) {
            bench.check(Bytes(valid.begin(), valid.begin() + static_cast<ptrdiff_t>(length)));
        }
        bench.check(valid + Bytes{0});
    });
}

TEST_P(Promises, HoldWithAnyBitChanged) {
    for_each_sample(150, [](const tlvmsg_type &, Bench &bench, const Bytes &valid) {
        for (size_t at = 0; at < valid.size(); ++at) {
            for (const int change : {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xFF}) {
                Bytes bytes = valid;
                bytes[at] = static_cast<uint8_t>(bytes[at] ^ change);
                bench.check(bytes);
            }
        }
    });
}

TEST_P(Promises, HoldForDamagedElements) {
    std::mt19937_64 random(20);
    size_t accepted = 0;
    size_t tried = 0;
    for_each_sample(2500, [&](const tlvmsg_type &type, Bench &, const Bytes &valid) {
        const Mutator mutator(type, valid);
        Bench bench(type, 9 * valid.size() + 64, Guard::Behind);
        for (int i = 0; i < 25; ++i, ++tried) {
            accepted += bench.check(mutator.mutated(random)) ? 1 : 0;
        }
    });
    if (tried > 10000) { // otherwise the mutations reach only one side of the promise
        EXPECT_GT(accepted, tried / 20);
        EXPECT_LT(accepted, tried * 19 / 20);
    }
}

INSTANTIATE_TEST_SUITE_P(Families, Promises, testing::ValuesIn(families()),
                         [](const auto &family) { return family.param.empty() ? "scalars" : family.param; });

} // namespace

} // namespace tlvmsg_test
