// Dynamic arrays: what is asked of the allocator, what becomes of its refusal, and what is sent.
#include "support/operations.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/common.h>
#include <tlvmsg/ethernet.h>
#include <tlvmsg/module.h>
#include <tlvmsg/qos.h>

namespace tlvmsg_test {

namespace {

class DynamicArray : public testing::Test {
protected:
    void SetUp() override { osal_double_reset(); }

    // The library never releases anything.
    void TearDown() override {
        EXPECT_EQ(osal_double_blocks_out() + failed_allocations_, osal_double_allocations());
        EXPECT_EQ(osal_double_faults(), 0U);
        osal_double_reset();
    }

    void fail_next_allocation() {
        osal_double_fail(1, 0);
        ++failed_allocations_;
    }

    // Exactly one block was asked for, of the platform's pool 0, and then cleared.
    static void expect_asked(size_t size, const void *block) {
        ASSERT_EQ(osal_double_call_count(), block == nullptr ? 1U : 2U);
        const osal_call asked = osal_double_call(0);
        EXPECT_EQ(asked.operation, OSAL_MALLOC);
        EXPECT_EQ(asked.selector, 0U);
        EXPECT_EQ(asked.size, size);
        EXPECT_EQ(asked.block, block);
        if (block != nullptr) {
            EXPECT_EQ(osal_double_call(1).operation, OSAL_MEMSET);
            EXPECT_EQ(osal_double_call(1).size, size);
            EXPECT_EQ(osal_double_call(1).block, block);
        }
    }

private:
    size_t failed_allocations_ = 0;
};

template <class Record>
Decoded<Record> decode_once(const Operations<Record> &operations, const Bytes &wire) {
    return decode(operations, wire, Image<Record>(), Guard::Behind);
}

// ---- of bytes ----

using TextArray = zel_vstring_vstring_array;
const auto text_array = OPERATIONS(zel_vstring_vstring_array);
const auto text = OPERATIONS(zel_vstring);
const Bytes abc_array = hex("00 0A 00 0A  00 04 00 02 00 03  61 62 63 00");

// What is sent begins at the pointer field itself and may run over the record's end.
TEST_F(DynamicArray, SendsTheRecordsBytesFromThePointerOnward) {
    Image<zel_vstring> record(16);
    record->characters.count = 3;
    record.put(record->characters.bytes, hex("61 62 63"));
    EXPECT_EQ(encoding(text, record), hex("06 B7 00 16  00 06 00 04 00 00 00 03") + abc_array);

    record->characters.count = 20;
    record.put(record->characters.bytes, repeated(4, hex("01 02 03 04 05")));
    EXPECT_EQ(encoding(text, record), hex("06 B7 00 27  00 06 00 04 00 00 00 14"
                                          "00 0A 00 1B  00 04 00 02 00 14") +
                                          repeated(4, hex("01 02 03 04 05")) + hex("00"));

    record->characters.count = 0x10003; // of which the array has the low half, its own element all
    record.put(record->characters.bytes, hex("61 62 63"));
    EXPECT_EQ(encoding(text, record), hex("06 B7 00 16  00 06 00 04 00 01 00 03") + abc_array);

    record->characters.count = 0;
    EXPECT_EQ(encoding(text, record), hex("06 B7 00 13  00 06 00 04 00 00 00 00"
                                          "00 0A 00 07  00 04 00 02 00 00  00"));
}

// One byte more than the count is asked for, and is the zero behind the bytes; the one on the wire is not
// read. The count in the array overrules the one before it.
TEST_F(DynamicArray, DecodesBytesIntoATerminatedBlock) {
    const Bytes wire = hex("06 B7 00 16  00 06 00 04 00 00 00 09  00 0A 00 0A  00 04 00 02 00 03  61 62 63");
    const auto decoded = decode_once(text, wire);
    EXPECT_EQ(decoded.end, 26U);
    EXPECT_EQ(decoded.record->characters.count, 3U);
    const uint8_t *block = decoded.record->characters.bytes;
    expect_asked(4, block);
    EXPECT_EQ(Bytes(block, block + 4), hex("61 62 63 00"));
}

// The largest count there is: 16 bits say it, of which the record keeps 8, and 17 how much is asked for.
TEST_F(DynamicArray, TruncatesTheStoredCountButNotTheBytes) {
    const Bytes name = repeated(0xFFFF, hex("78"));
    const auto decoded =
        decode_once(OPERATIONS(if_name_name_array), hex("00 0A 00 00  00 04 00 02 FF FF") + name);
    EXPECT_EQ(decoded.end, 4U);
    EXPECT_EQ(decoded.record->count, 0xFF);
    const uint8_t *block = decoded.record->bytes;
    expect_asked(0x10000, block);
    EXPECT_EQ(Bytes(block, block + 0x10000), name + hex("00"));
}

TEST_F(DynamicArray, RefusedMemoryFailsTheArrayButNotItsStructure) {
    fail_next_allocation();
    const auto array = decode_once(text_array, abc_array);
    EXPECT_EQ(array.end, Distance());
    EXPECT_EQ(array.record->count, 3U);
    EXPECT_EQ(array.record->bytes, nullptr);
    expect_asked(4, nullptr);

    fail_next_allocation();
    const auto structure =
        decode_once(OPERATIONS(vrf_info), hex("03 FC 00 26  00 06 00 04 00 00 00 01  00 04 00 02 00 02"
                                              "03 FB 00 14  00 04 00 02 00 03") +
                                              abc_array);
    EXPECT_EQ(structure.end, 42U);
    EXPECT_EQ(structure.record->value_1, 1U);
    EXPECT_EQ(structure.record->value_2, 2);
    EXPECT_EQ(structure.record->name.str.count, 3);
    EXPECT_EQ(structure.record->name.str.bytes, nullptr);
}

TEST_F(DynamicArray, AsksForNothingOnAnotherTag) {
    const auto decoded = decode_once(text_array, hex("00 0B 00 0A"));
    EXPECT_EQ(decoded.end, Distance());
    EXPECT_EQ(decoded.record, Image<TextArray>());
    EXPECT_EQ(osal_double_allocations(), 0U);
}

TEST_F(DynamicArray, GivesNullForNull) {
    Image<TextArray> bytes;
    bytes->count = 3;
    expect_null_results(text_array, bytes, abc_array, {0, Distance()});
    expect_nothing_from_null(text_array);
    Image<plim_qos_vc_info_vc_info_array> elements;
    elements->count = 0;
    expect_null_results(OPERATIONS(plim_qos_vc_info_vc_info_array), elements,
                        hex("00 0A 00 06 00 04 00 02 00 00"), {0, Distance()});
    expect_nothing_from_null(OPERATIONS(plim_qos_vc_info_vc_info_array));
    EXPECT_EQ(osal_double_allocations(), 0U);
}

// A missing array leaves the count that was sent before it, except where the structure clears it first,
// which it does even behind a failed member.
TEST_F(DynamicArray, MissingLeavesTheCountOrClearsIt) {
    Image<acl_handle> kept;
    kept->name.count = 5;
    const auto handle = decode(OPERATIONS(acl_handle), hex("03 EE 00 06  00 04 00 02 00 05  00 0B 00 0A"));
    EXPECT_EQ(handle.end, 10U);
    EXPECT_EQ(handle.record, kept);

    const auto attributes = OPERATIONS(kavu_ext_attrib);
    Image<kavu_ext_attrib> cleared;
    cleared->ext_attrib.count = 0;
    expect_decoded(attributes, hex("05 15 00 06  00 04 00 03"), 10, cleared);
}

// ---- of elements ----

const auto circuits = OPERATIONS(plim_qos_vc_info);
const Bytes circuit_1 =
    hex("04 F3 00 19  00 06 00 04 00 00 00 01  04 F1 00 08 00 06 00 04 00 00 00 02  00 02 00 01 03");
const Bytes circuit_2 =
    hex("04 F3 00 19  00 06 00 04 00 00 00 04  04 F1 00 08 00 06 00 04 00 00 00 05  00 02 00 01 06");
const Bytes two_circuits =
    hex("04 F4 00 4A  00 04 00 02 00 02  00 0A 00 40  00 04 00 02 00 02") + circuit_1 + circuit_2;

TEST_F(DynamicArray, DecodesElementsIntoABlock) {
    const auto decoded = decode_once(circuits, two_circuits);
    EXPECT_EQ(decoded.end, two_circuits.size());
    EXPECT_EQ(decoded.record->vc_info.count, 2);
    const plim_vc_cfg *items = decoded.record->vc_info.items;
    expect_asked(2 * sizeof(plim_vc_cfg), items);
    EXPECT_EQ(items[0].value_1, 1U);
    EXPECT_EQ(items[0].l2_template_type, 2U);
    EXPECT_EQ(items[0].value_2, 3);
    EXPECT_EQ(items[1].value_1, 4U);
    EXPECT_EQ(items[1].l2_template_type, 5U);
    EXPECT_EQ(items[1].value_2, 6);
}

// Without items, or with the count broken, the platform is still asked: for the zero byte, or for nothing.
TEST_F(DynamicArray, DecodesNothingIntoABlockToo) {
    const auto elements = OPERATIONS(plim_qos_vc_info_vc_info_array);
    for (const char *count : {"00 04 00 02 00 00", "00 06 00 04"}) {
        osal_double_reset();
        const auto bytes = decode_once(text_array, hex("00 0A 00 07") + hex(count));
        EXPECT_EQ(bytes.end, 11U) << count;
        EXPECT_EQ(bytes.record->count, 0U);
        expect_asked(1, bytes.record->bytes);
        EXPECT_EQ(*bytes.record->bytes, 0);
        osal_double_reset();
        const auto none = decode_once(elements, hex("00 0A 00 06") + hex(count));
        EXPECT_EQ(none.end, 10U) << count;
        EXPECT_EQ(none.record->count, 0);
        expect_asked(0, none.record->items);
    }
    osal_double_reset();
    fail_next_allocation();
    EXPECT_EQ(decode_once(elements, hex("00 0A 00 06  00 04 00 02 00 00")).end, Distance());
}

// Behind an element that fails the block stays clear, and the array none the worse for it.
TEST_F(DynamicArray, ElementThatFailsEndsTheDecodingOfElements) {
    const auto decoded = decode_once(OPERATIONS(plim_qos_vc_info_vc_info_array),
                                     hex("00 0A 00 40  00 04 00 02 00 03") + circuit_1 + hex("04 F4 00 19"));
    EXPECT_EQ(decoded.end, 68U);
    EXPECT_EQ(decoded.record->count, 3);
    const auto *block = reinterpret_cast<const uint8_t *>(decoded.record->items);
    expect_asked(3 * sizeof(plim_vc_cfg), block);
    EXPECT_EQ(decoded.record->items[0].value_2, 3);
    EXPECT_EQ(Bytes(block + sizeof(plim_vc_cfg), block + 3 * sizeof(plim_vc_cfg)),
              Bytes(2 * sizeof(plim_vc_cfg), 0));
}

// All that the wire announces is allocated and decoded; only the stored count is cut to 8 bits.
TEST_F(DynamicArray, TruncatesTheStoredCountButNotTheElements) {
    const Bytes address_only = hex("04 6B 00 04  04 12 00 00"); // and even its bytes are missing
    const Bytes wire = hex("00 0A 08 16  00 04 00 02 01 02") + repeated(258, address_only) + Bytes(4, 0);
    const auto decoded = decode_once(OPERATIONS(mac_acct_stats_bundle_stats_array), wire);
    EXPECT_EQ(decoded.end, 10U + 258 * 8);
    EXPECT_EQ(decoded.record->count, 2);
    expect_asked(258 * sizeof(mac_acct_stats), decoded.record->items);
    for (size_t i = 0; i < 258; ++i) {
        EXPECT_EQ(decoded.record->items[i].mac_addr.mac.count, 6) << i;
        EXPECT_EQ(decoded.record->items[i].counter_1.counter, 0U) << i;
    }
}

// The heartbeat's members are left out: its first would be a uint64. So are those of the service point.
const auto statistics = OPERATIONS(conn_mgr_stats);
const Bytes statistics_wire = hex("06 B2 00 23  06 B0 00 00  00 02 00 01 01  00 0A 00 0A 00 04 00 02 00 01"
                                  "06 B1 00 00  00 08 00 08 00 00 00 00 00 00 00 09");

TEST_F(DynamicArray, RefusedMemoryEndsTheStructureThere) {
    fail_next_allocation();
    Image<conn_mgr_stats> expected;
    expected->sap_stats.count = 1;
    expected->sap_stats.items = nullptr;
    const auto decoded = decode_once(statistics, statistics_wire);
    EXPECT_EQ(decoded.end, 4U + 0x23);
    EXPECT_EQ(decoded.record, expected);

    // A message of this structure alone succeeds likewise, its record clear behind the array.
    fail_next_allocation();
    const auto message = decode_once(OPERATIONS(zel_conn_mgr_stats_message), statistics_wire);
    EXPECT_EQ(message.end, 4U + 0x23);
    EXPECT_EQ(message.record->stats.sap_stats.count, 1);
    EXPECT_EQ(message.record->stats.counter, 0U);
}

TEST_F(DynamicArray, ElementsWithoutAPointerFailOnceAnnounced) {
    const auto operations = OPERATIONS(plim_qos_vc_info_vc_info_array);
    Image<plim_qos_vc_info_vc_info_array> record;
    record->items = nullptr;
    record->count = 1;
    EXPECT_EQ(operations.size(&*record), 10);
    const Encoded encoded = encode(operations, record, 12);
    EXPECT_EQ(encoded.end, Distance());
    EXPECT_EQ(encoded.bytes, hex("00 0A 00 06 00 04 00 02 00 01") + Bytes(2, untouched));
    record->count = 0;
    EXPECT_EQ(encoding(operations, record), hex("00 0A 00 06 00 04 00 02 00 00"));
}

} // namespace

} // namespace tlvmsg_test
