// Two implementations of the wire format, and a third to judge them by: the strict operations accept just the
// input that the descriptors' engine finds flawless, leave its record to the byte, as the exact decoder does,
// and write the bytes that it writes. And where they give up, nobody can tell that they were tried.
#include "inspect/samples.h"
#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/osal_double/osal_double.h"
#include "support/record.h"

#include "runtime/operations.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tlvmsg_test {

namespace {

constexpr uint8_t paint = 0xA5;

// Blocks in the order of their allocation since the reset, without what has become of them.
Bytes blocks() {
    Bytes all;
    for (size_t i = 0; i < std::min<size_t>(osal_double_call_count(), 1024); ++i) {
        const osal_call call = osal_double_call(i);
        if (call.operation == OSAL_MALLOC && call.block != nullptr) {
            const auto *bytes = static_cast<const uint8_t *>(call.block);
            all.insert(all.end(), bytes, bytes + call.size);
        }
    }
    return all;
}

class Comparison {
public:
    Comparison(const tlvmsg_type &type, size_t largest_input)
        : type_(type), engine_(type), exact_(find_codec(type)), input_(largest_input + 1),
          strict_record_(type.size), engine_record_(type.size), exact_record_(type.size) {
        engine_.operations = nullptr;
        EXPECT_NE(type.operations, nullptr) << type.name;
    }

    // Whether the input is flawless. (The exact decoder of a union alone goes by what is in the record.)
    bool check(const Bytes &bytes, size_t allocation = 0) {
        SCOPED_TRACE(std::string(type_.name) + "\n" + to_hex(bytes.data(), bytes.size()));
        in_ = input_.end() - bytes.size();
        size_ = bytes.size();
        std::copy(bytes.begin(), bytes.end(), in_);
        limits_ = {allocation != 0 ? allocation : tlvmsg_default_allocation(size_), false, {}};
        tlvmsg_extent extent;
        const bool accepted = tlvmsg_verify(&engine_, in_, size_, &limits_, &extent, nullptr);
        const bool flawless = accepted && extent.deviations == 0;
        check_operations(flawless, extent);
        check_functions();
        limits_.strict = true;
        check_functions();
        return flawless;
    }

    void check_encoding(const uint8_t *record) {
        size_t size[2] = {0, 0};
        tlvmsg_fault fault[2];
        const bool encodable = tlvmsg_size(&engine_, record, &size[1], &fault[1]);
        EXPECT_EQ(tlvmsg_size(&type_, record, &size[0], &fault[0]), encodable) << type_.name;
        EXPECT_EQ(size[0], size[1]) << type_.name;
        EXPECT_EQ(line(fault[0]), line(fault[1]));
        EXPECT_EQ(type_.operations->size(record), encodable ? size[1] : type_.operations->size(record));
        EXPECT_EQ(type_.operations->size(record) <= tlvmsg::largest_size, encodable) << type_.name;

        const size_t needed = size[1];
        GuardedBuffer strict(needed + 1);
        GuardedBuffer engine(needed + 1);
        for (const size_t room : {needed, needed + 1, needed / 2, size_t{0}, SIZE_MAX / 2, SIZE_MAX}) {
            const size_t there = room <= needed ? room : needed;
            uint8_t *const out = strict.end() - there;
            uint8_t *const by_engine = engine.end() - there;
            const bool fits = tlvmsg_encode(&engine_, record, by_engine, room, &size[1], &fault[1]);
            EXPECT_EQ(fits, encodable && room >= needed);
            EXPECT_EQ(tlvmsg_encode(&type_, record, out, room, &size[0], &fault[0]), fits) << type_.name;
            EXPECT_EQ(size[0], size[1]) << type_.name;
            EXPECT_EQ(line(fault[0]), line(fault[1]));
            EXPECT_EQ(std::memcmp(out, by_engine, size[1]), 0) << type_.name;
            EXPECT_EQ(type_.operations->encode(record, out, room), fits ? out + size[1] : nullptr);
        }
    }

private:
    static std::string line(const tlvmsg_fault &fault) {
        char text[TLVMSG_FAULT_TEXT];
        tlvmsg_fault_text(&fault, text, sizeof text);
        return fault.code == TLVMSG_OK ? fault.path : text;
    }

    void check_operations(bool flawless, const tlvmsg_extent &extent) {
        osal_double_reset();
        tlvmsg::Input verified{in_ + size_, limits_.allocation};
        const uint8_t *const end = flawless ? in_ + extent.consumed : nullptr;
        EXPECT_EQ(type_.operations->verify(in_, &verified), end);
        EXPECT_EQ(osal_double_call_count(), 0u);

        tlvmsg::Input decoded{in_ + size_, limits_.allocation};
        std::memset(strict_record_.data(), paint, type_.size);
        EXPECT_EQ(type_.operations->accept(in_, &decoded, strict_record_.data()), end);
        EXPECT_EQ(osal_double_blocks_out(), flawless ? extent.blocks : osal_double_blocks_out());
        EXPECT_TRUE(type_.operations->allocates || osal_double_blocks_out() == 0);
        if (flawless) {
            for (const tlvmsg::Input &each : {verified, decoded}) {
                EXPECT_EQ(each.allocated, extent.allocated);
                EXPECT_EQ(each.blocks, extent.blocks);
            }
            check_records(end);
        }
        if (decoded.blocks > 0) {
            tlvmsg_release(&type_, strict_record_.data());
        }
        EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0u);
    }

    void check_records(const uint8_t *end) {
        const Bytes strict_blocks = blocks();
        std::memset(exact_record_.data(), 0, type_.size);
        EXPECT_EQ(exact_.decode(in_, exact_record_.data()), end);
        EXPECT_TRUE(tlvmsg_equal(&type_, strict_record_.data(), exact_record_.data()));
        tlvmsg_release(&type_, exact_record_.data());
        GuardedBuffer &kept = exact_record_; // release sets pointers to null, and counts
        std::memcpy(kept.data(), strict_record_.data(), type_.size);
        tlvmsg_release(&type_, strict_record_.data());

        osal_double_reset();
        std::memset(engine_record_.data(), paint, type_.size);
        EXPECT_TRUE(tlvmsg_decode(&engine_, in_, size_, &limits_, engine_record_.data(), nullptr, nullptr));
        EXPECT_EQ(blocks(), strict_blocks);
        tlvmsg_release(&type_, engine_record_.data());
        EXPECT_EQ(std::memcmp(strict_record_.data(), engine_record_.data(), type_.size), 0);
    }

    // With the strict operations before the engine and without them.
    void check_functions() {
        tlvmsg_extent extent[2];
        tlvmsg_fault fault[2];
        size_t consumed[2];
        const bool accepted = tlvmsg_verify(&engine_, in_, size_, &limits_, &extent[1], &fault[1]);
        EXPECT_EQ(tlvmsg_verify(&type_, in_, size_, &limits_, &extent[0], &fault[0]), accepted);
        EXPECT_EQ(line(fault[0]), line(fault[1]));
        const size_t numbers = offsetof(tlvmsg_extent, deviations) + sizeof extent->deviations;
        EXPECT_EQ(std::memcmp(&extent[0], &extent[1], numbers), 0);
        EXPECT_EQ(line(extent[0].first_deviation), line(extent[1].first_deviation));

        GuardedBuffer *const records[] = {&strict_record_, &engine_record_};
        osal_double_reset();
        for (int i = 0; i < 2; ++i) {
            std::memset(records[i]->data(), paint, type_.size);
            EXPECT_EQ(tlvmsg_decode(i == 0 ? &type_ : &engine_, in_, size_, &limits_, records[i]->data(),
                                    &consumed[i], &fault[i]),
                      accepted);
        }
        EXPECT_EQ(consumed[0], consumed[1]);
        EXPECT_EQ(line(fault[0]), line(fault[1]));
        EXPECT_EQ(osal_double_blocks_out(), 2 * extent[1].blocks);
        EXPECT_TRUE(tlvmsg_equal(&type_, strict_record_.data(), engine_record_.data()));
        tlvmsg_release(&type_, strict_record_.data());
        tlvmsg_release(&type_, engine_record_.data());
        EXPECT_EQ(std::memcmp(strict_record_.data(), engine_record_.data(), type_.size), 0);
        EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0u);
    }

    const tlvmsg_type &type_;
    tlvmsg_type engine_; // the same without operations of its own
    Codec exact_;
    GuardedBuffer input_;
    GuardedBuffer strict_record_;
    GuardedBuffer engine_record_;
    GuardedBuffer exact_record_;
    uint8_t *in_ = nullptr;
    size_t size_ = 0;
    tlvmsg_limits limits_{};
};

class Strict : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Families, Strict, testing::ValuesIn(families()),
                         [](const auto &family) { return family.param.empty() ? "scalars" : family.param; });

// What they make of anything else, tests of properties compare with the engine's trace.
TEST_P(Strict, AcceptsWhatIsFlawlessWithinLimits) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        for_each_valid(type, [&](const Bytes &valid) {
            Comparison comparison(type, valid.size() + 1);
            tlvmsg_extent extent;
            tlvmsg_verify(&type, valid.data(), valid.size(), nullptr, &extent, nullptr);
            EXPECT_TRUE(comparison.check(valid) || type.kind == TLVMSG_UNION ||
                        type.name == std::string("char"));
            EXPECT_EQ(comparison.check(valid + Bytes{0}), comparison.check(valid));
            if (extent.allocated > 1) {
                EXPECT_TRUE(comparison.check(valid, extent.allocated));
                EXPECT_FALSE(comparison.check(valid, extent.allocated - 1));
            }
        });
    });
}

// Records of any content, which must not hold pointers then. Small numbers make small counts.
TEST_P(Strict, EncodesWhatTheEngineEncodes) {
    std::mt19937_64 random(8);
    for_each_type_of(GetParam(), [&](const tlvmsg_type &type) {
        Comparison comparison(type, 0);
        for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
            const Sample sample(type, seed, counts, choice, paint);
            comparison.check_encoding(sample.record());
            if (type.operations->allocates) {
                return;
            }
            GuardedBuffer any(size_t{type.size + 7} / 8 * 8);
            const uint8_t mask = random() % 2 != 0 ? 0xFF : 0x07;
            std::generate(any.begin(), any.end(), [&] { return static_cast<uint8_t>(random() & mask); });
            comparison.check_encoding(any.data());
        });
    });
}

} // namespace

} // namespace tlvmsg_test
