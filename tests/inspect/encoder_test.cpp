// Encoding within bounds: the exact encoder's bytes, or a fault, and nothing beyond the output.
#include "inspect/samples.h"
#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/record.h"

#include <tlvmsg/all.h>

#include <gtest/gtest.h>

#include <cstring>

namespace tlvmsg_test {

namespace {

bool holds_dynamic_bytes(const tlvmsg_type &type) {
    bool found = false;
    for_each_type(type, [&](const tlvmsg_type &each) { found = found || each.kind == TLVMSG_DYNAMIC_BYTES; });
    return found;
}

std::string fault_line(const tlvmsg_fault &fault) {
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(&fault, line, sizeof line);
    return line;
}

class Encoding : public testing::TestWithParam<std::string> {
protected:
    void
    for_each_encodable(const std::function<void(const tlvmsg_type &, const Sample &, size_t size)> &visit) {
        size_t encodable = 0;
        for_each_type_of(GetParam(), [&](const tlvmsg_type &type) {
            for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
                const Sample sample(type, seed, counts, choice);
                size_t size;
                if (tlvmsg_size(&type, sample.record(), &size, nullptr)) {
                    visit(type, sample, size);
                    ++encodable;
                }
            });
        });
        EXPECT_GT(encodable, 0u);
    }
};

TEST_P(Encoding, GivesTheBytesOfTheExactEncoder) {
    for_each_encodable([&](const tlvmsg_type &type, const Sample &sample, size_t size) {
        if (holds_dynamic_bytes(type)) {
            return;
        }
        const Codec exact = find_codec(type);
        GuardedBuffer ours(size);
        GuardedBuffer theirs(size);
        size_t written = 0;
        ASSERT_TRUE(tlvmsg_encode(&type, sample.record(), ours.data(), size, &written, nullptr)) << type.name;
        EXPECT_EQ(written, size);
        EXPECT_EQ(exact.encode(sample.record(), theirs.data()), theirs.end()) << type.name;
        EXPECT_EQ(std::memcmp(ours.data(), theirs.data(), size), 0) << type.name;
    });
}

// A union by itself has lost the selector that its bytes depend on.
TEST_P(Encoding, DecodesToTheSameRecord) {
    for_each_encodable([&](const tlvmsg_type &type, const Sample &sample, size_t) {
        if (type.kind == TLVMSG_UNION || type.name == std::string("char")) {
            return;
        }
        const Bytes bytes = sample.encoded();
        std::vector<uint64_t> storage(type.size / sizeof(uint64_t) + 1);
        tlvmsg_fault fault;
        ASSERT_TRUE(
            tlvmsg_decode(&type, bytes.data(), bytes.size(), nullptr, storage.data(), nullptr, &fault))
            << fault_line(fault);
        EXPECT_TRUE(tlvmsg_equal(&type, sample.record(), storage.data())) << type.name;
        tlvmsg_release(&type, storage.data());
    });
}

TEST_P(Encoding, StopsWhereTheOutputEnds) {
    for_each_encodable([&](const tlvmsg_type &type, const Sample &sample, size_t size) {
        if (size > 200) {
            return;
        }
        GuardedBuffer out(size + 1);
        for (size_t capacity = 0; capacity < size; ++capacity) {
            size_t written = 1;
            tlvmsg_fault fault;
            ASSERT_FALSE(
                tlvmsg_encode(&type, sample.record(), out.end() - capacity, capacity, &written, &fault))
                << type.name;
            EXPECT_EQ(fault.code, TLVMSG_OUTPUT_FULL);
            EXPECT_EQ(fault.allowed, capacity);
            EXPECT_GT(fault.found, capacity);
            EXPECT_LE(fault.offset, capacity);
            EXPECT_EQ(written, 0u);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Families, Encoding, testing::ValuesIn(families()),
                         [](const auto &family) { return family.param.empty() ? "scalars" : family.param; });

TEST(Encoding, SendsTheBlockOfDynamicBytes) {
    uint8_t text[] = {'e', 't', 'h', '0'};
    if_name name{};
    name.name.count = sizeof text;
    name.name.bytes = text;
    Bytes out(64);
    size_t written = 0;
    ASSERT_TRUE(tlvmsg_encode(tlvmsg_type_find("if_name"), &name, out.data(), out.size(), &written, nullptr));
    out.resize(written);
    EXPECT_EQ(out, hex("03 F0 00 14  00 02 00 01 04  00 0A 00 0B  00 04 00 02 00 04  65 74 68 30 00"));

    name.name.count = 0;
    name.name.bytes = nullptr;
    out.resize(64);
    ASSERT_TRUE(tlvmsg_encode(tlvmsg_type_find("if_name"), &name, out.data(), out.size(), &written, nullptr));
    out.resize(written);
    EXPECT_EQ(out, hex("03 F0 00 10  00 02 00 01 00  00 0A 00 07  00 04 00 02 00 00  00"));
}

std::string refusal(const char *type, const void *record) {
    tlvmsg_fault fault;
    size_t size = 1;
    EXPECT_FALSE(tlvmsg_size(tlvmsg_type_find(type), record, &size, &fault));
    EXPECT_EQ(size, 0u);
    return fault_line(fault);
}

TEST(Encoding, RefusesWhatTheWireCannotSay) {
    zel_mac_addr mac{};
    mac.mac.count = 7;
    EXPECT_EQ(refusal("zel_mac_addr", &mac),
              "error[count-exceeds-capacity]: zel_mac_addr.mac.count: 7 exceeds capacity 6 at byte 4");

    if_name name{};
    name.name.count = 2;
    EXPECT_EQ(refusal("if_name", &name),
              "error[items-missing]: if_name.name.count: 2 items behind a null pointer at byte 9");

    // 65,535 bytes hold the count's element, the characters and the terminator, and the structure has another
    // number of eight bytes and the array's header.
    std::vector<uint8_t> characters(70000);
    zel_vstring text{};
    text.characters.bytes = characters.data();
    text.characters.count = 70000;
    EXPECT_EQ(
        refusal("zel_vstring", &text),
        "error[value-too-long]: zel_vstring.characters: a value of 70000 bytes exceeds 65535 at byte 12");
    text.characters.count = 65529;
    EXPECT_EQ(
        refusal("zel_vstring", &text),
        "error[value-too-long]: zel_vstring.characters: a value of 65536 bytes exceeds 65535 at byte 12");
    text.characters.count = 65517;
    EXPECT_EQ(refusal("zel_vstring", &text),
              "error[value-too-long]: zel_vstring: a value of 65536 bytes exceeds 65535 at byte 0");
    text.characters.count = 65516;
    size_t size = 0;
    EXPECT_TRUE(tlvmsg_size(tlvmsg_type_find("zel_vstring"), &text, &size, nullptr));
    EXPECT_EQ(size, 4u + 65535u);
}

} // namespace

} // namespace tlvmsg_test
