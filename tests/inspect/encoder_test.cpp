// Encoding where it differs from the exact one: blocks of bytes, and what the wire cannot say.
#include "inspect/promises.h"

#include <tlvmsg/common.h>
#include <tlvmsg/inspect.h>

#include <gtest/gtest.h>

namespace tlvmsg_test {

namespace {

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

// Whatever room there is said to be, and nothing is written.
std::string encode_refusal(const char *name, const void *record) {
    const tlvmsg_type *type = tlvmsg_type_find(name);
    tlvmsg_fault fault[2];
    size_t size[2] = {1, 1};
    EXPECT_FALSE(tlvmsg_size(type, record, &size[0], &fault[0]));
    GuardedBuffer out(1);
    EXPECT_FALSE(tlvmsg_encode(type, record, out.end(), SIZE_MAX, &size[1], &fault[1]));
    EXPECT_EQ(size[0] + size[1], 0u);
    EXPECT_EQ(facts_of(fault[0]), facts_of(fault[1]));
    return facts_of(fault[0]);
}

// Strictly, and by the engine alone.
TEST(Encoding, OfNothingNeedsNoOutput) {
    size_t empty = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        tlvmsg_type type = *tlvmsg_type_at(i);
        std::vector<uint64_t> record(type.size / sizeof(uint64_t) + 1, UINT64_MAX); // chooses no alternative
        if (type.min_encoded > 0) {
            continue;
        }
        ++empty;
        for (const tlvmsg_operations *operations :
             {type.operations, static_cast<const tlvmsg_operations *>(nullptr)}) {
            type.operations = operations;
            size_t written = 1;
            EXPECT_TRUE(tlvmsg_encode(&type, record.data(), nullptr, 0, &written, nullptr)) << type.name;
            EXPECT_EQ(written, 0u);
        }
    }
    EXPECT_GT(empty, 0u);
}

TEST(Encoding, RefusesWhatTheWireCannotSay) {
    zel_mac_addr mac{};
    mac.mac.count = 7;
    EXPECT_EQ(encode_refusal("zel_mac_addr", &mac),
              "count-exceeds-capacity at 4: zel_mac_addr.mac.count, 7, 6");
    mac.mac.count = 65535;
    EXPECT_EQ(encode_refusal("zel_mac_addr", &mac),
              "count-exceeds-capacity at 4: zel_mac_addr.mac.count, 65535, 6");

    if_name name{};
    name.name.count = 2;
    EXPECT_EQ(encode_refusal("if_name", &name), "items-missing at 9: if_name.name.count, 2, 0");

    // 65,535 bytes hold the count's element, the characters and the terminator, and the structure has another
    // number of eight bytes and the array's header.
    std::vector<uint8_t> characters(70000);
    zel_vstring text{};
    text.characters.bytes = characters.data();
    text.characters.count = 70000;
    EXPECT_EQ(encode_refusal("zel_vstring", &text),
              "value-too-long at 12: zel_vstring.characters, 70000, 65535");
    text.characters.count = 65529;
    EXPECT_EQ(encode_refusal("zel_vstring", &text),
              "value-too-long at 12: zel_vstring.characters, 65536, 65535");
    text.characters.count = 65517;
    EXPECT_EQ(encode_refusal("zel_vstring", &text), "value-too-long at 0: zel_vstring, 65536, 65535");
    text.characters.count = 65516;
    size_t size = 0;
    EXPECT_TRUE(tlvmsg_size(tlvmsg_type_find("zel_vstring"), &text, &size, nullptr));
    EXPECT_EQ(size, 4u + 65535u);
}

} // namespace

} // namespace tlvmsg_test
