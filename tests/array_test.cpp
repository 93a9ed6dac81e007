// Bounded arrays: of elements, of bare integers and of bytes, and what their structures do about them.
#include "support/operations.h"

#include <tlvmsg/common.h>
#include <tlvmsg/ethernet.h>
#include <tlvmsg/qos.h>
#include <tlvmsg/switch.h>
#include <tlvmsg/voice.h>

namespace tlvmsg_test {

namespace {

const Bytes empty_array = hex("00 0A 00 06 00 04 00 02 00 00");

// ---- of elements ----

using PairArray = zel_analogbri_tdm_conn_req_conn_pair_array;
const auto pair_array = OPERATIONS(zel_analogbri_tdm_conn_req_conn_pair_array);

constexpr size_t room_for_two_more = 2 * sizeof(zel_analogbri_conn_pair);

const Bytes pair_1 =
    hex("05 46 00 18  00 04 00 02 00 11  00 04 00 02 00 12  00 04 00 02 00 13  00 04 00 02 00 14");
const Bytes pair_2 =
    hex("05 46 00 18  00 04 00 02 00 21  00 04 00 02 00 22  00 04 00 02 00 23  00 04 00 02 00 24");
const Bytes pair_3 =
    hex("05 46 00 18  00 04 00 02 00 31  00 04 00 02 00 32  00 04 00 02 00 33  00 04 00 02 00 34");

// The array has room for one pair; more lie behind it.
void set_pairs(PairArray &array, uint16_t count) {
    array.count = count;
    zel_analogbri_conn_pair *pairs = array.items;
    asm("" : "+r"(pairs)); // so that the compiler does not hold us to the room
    for (uint16_t i = 0; i < count; ++i) {
        const auto tens = static_cast<uint16_t>(0x10 * (i + 1));
        pairs[i] = {static_cast<uint16_t>(tens + 1), static_cast<uint16_t>(tens + 2),
                    static_cast<uint16_t>(tens + 3), static_cast<uint16_t>(tens + 4)};
    }
}

TEST(ElementArray, IsItsCountAndItsElements) {
    Image<PairArray> record;
    record->count = 0;
    expect_exchange(pair_array, record, empty_array);
    expect_null_results(pair_array, record, empty_array, {0, Distance()});
    expect_nothing_from_null(pair_array);
    Image<PairArray> overfull(room_for_two_more); // the count is not held against the capacity
    set_pairs(*overfull, 3);
    expect_exchange(pair_array, overfull, hex("00 0A 00 5A 00 04 00 02 00 03") + pair_1 + pair_2 + pair_3);
}

TEST(ElementArray, EndsByItsLengthWhateverItHolds) {
    const auto expect_pairs = [](const Bytes &wire, size_t end, uint16_t count, uint16_t decoded) {
        Image<PairArray> expected(room_for_two_more);
        set_pairs(*expected, decoded);
        expected->count = count;
        expect_decoded(pair_array, wire, end, expected);
    };
    expect_pairs(hex("00 0A 00 40 00 04 00 02 00 01") + pair_1, 68, 1, 1);
    expect_pairs(hex("00 0A 00 06 00 04 00 02 00 01") + pair_1, 10, 1, 1);
    expect_pairs(hex("00 0A 00 00 00 04 00 02 00 01") + pair_1, 4, 1, 1);
    // A count that is no uint16 is none; an item of another tag ends the decoding of items.
    expect_pairs(hex("00 0A 00 22 00 06 00 04"), 38, 0, 0);
    expect_pairs(hex("00 0A 00 22 00 04 00 04"), 38, 0, 0);
    const Bytes three = hex("00 0A 00 5A 00 04 00 02 00 03");
    expect_pairs(three + pair_1 + hex("05 47 00 18"), 94, 3, 1);
    expect_pairs(three + hex("05 47 00 18"), 94, 3, 0);
}

TEST(ElementArray, FailsOnAnotherTag) {
    for (const char *header : {"00 0B 00 06", "0A 0A 00 06", "00 04 00 02"}) {
        expect_decoded(pair_array, hex(header), Distance(), Image<PairArray>());
    }
}

// A structure sets the count to the capacity before it decodes, even behind a failed member; a bad count is not a
// missing array.
TEST(ElementArray, CountsItsCapacityWhenItIsMissing) {
    const auto request = OPERATIONS(zel_analogbri_tdm_conn_req);
    Image<zel_analogbri_tdm_conn_req> expected;
    expected->conn_pair.count = 1;
    expect_decoded(request, hex("05 47 00 1C 00 02 00 01"), 32, expected);
    expected->value_1 = 1;
    expected->value_2 = 2;
    expected->value_3 = 3;
    const Bytes values = hex("00 04 00 02 00 01  00 04 00 02 00 02  00 04 00 02 00 03");
    for (const char *instead : {"05 47 00 1C", "00 0B 00 06", "00 00 00 00"}) {
        expect_decoded(request, hex("05 47 00 12") + values + hex(instead), 22, expected);
    }
    expected->conn_pair.count = 0;
    expect_decoded(request, hex("05 47 00 38") + values + hex("00 0A 00 22 00 02 00 01"), 60, expected);
}

// ---- of bare integers ----

using Registers = zel_bri_show_contr_resp_reg_array;
const auto registers = OPERATIONS(zel_bri_show_contr_resp_reg_array);

TEST(PackedArray, CarriesBareIntegersOfAnyWidth) {
    Image<Registers> words(4); // 20 of 22 have room, and the rest is sent and stored like them
    words->count = 22;
    words.put(words->items, repeated(22, hex("7F 7F")));
    words->items[0] = 0x8001;
    const Bytes wire = hex("00 0A 00 32 00 04 00 02 00 16 80 01") + repeated(21, hex("7F 7F"));
    expect_exchange(registers, words, wire);
    expect_null_results(registers, words, wire, {0, Distance()});
    expect_nothing_from_null(registers);

    Image<zel_wrrq_cosmap> map;
    map->qmap.count = 2;
    map->qmap.items[0] = 0x80000001;
    map->qmap.items[1] = 0xFFFFFFFE;
    expect_exchange(OPERATIONS(zel_wrrq_cosmap), map,
                    hex("06 65 00 12  00 0A 00 0E 00 04 00 02 00 02 80 00 00 01 FF FF FF FE"));

    Image<ether_all_qinq_config_classify> classify;
    classify->value = 5;
    classify->cos_bitmap.count = 1;
    classify->cos_bitmap.items[0] = 0x8000000000000001;
    expect_exchange(
        OPERATIONS(ether_all_qinq_config_classify), classify,
        hex("04 F8 00 18  00 04 00 02 00 05  00 0A 00 0E 00 04 00 02 00 01 80 00 00 00 00 00 00 01"));
}

TEST(PackedArray, EndsByItsLength) {
    Image<Registers> expected;
    expected->count = 1;
    expected->items[0] = 0x1234;
    for (const size_t length : {size_t{0}, size_t{6}, size_t{8}, size_t{40}}) {
        expect_decoded(registers, hex("00 0A") + be16(length) + hex("00 04 00 02 00 01 12 34"), 4 + length,
                       expected);
    }
    expected = Image<Registers>();
    expected->count = 0;
    expect_decoded(registers, hex("00 0A 00 08 00 06 00 02"), 12, expected);
    EXPECT_EQ(decode(registers, hex("00 0B 00 08")).end, Distance());
}

// ---- of bytes ----

Bytes text(size_t size) {
    Bytes bytes(size);
    for (size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<uint8_t>(i % 251 + 1);
    }
    return bytes;
}

Bytes byte_array_prefix(size_t count, size_t terminator) {
    return hex("00 0A") + be16(6 + count + terminator) + hex("00 04 00 02") + be16(count);
}

template <class Record>
Image<Record> byte_array_record(const Bytes &bytes, size_t behind = 0) {
    Image<Record> record(behind);
    record->count = static_cast<uint16_t>(bytes.size());
    record.put(record->bytes, bytes);
    return record;
}

// A zero byte follows the bytes when there is room for it, on the wire and in the record. The decoder does
// not read the one on the wire.
template <class Record>
void expect_terminator_below_capacity(const Operations<Record> &operations, size_t count) {
    const Image<Record> sent = byte_array_record<Record>(text(count));
    const Bytes wire = byte_array_prefix(count, 1) + text(count);
    EXPECT_EQ(encoding(operations, sent), wire + hex("00"));
    const auto decoded = decode(operations, wire);
    EXPECT_EQ(decoded.end, wire.size() + 1);
    Image<Record> received = sent;
    received.put(received->bytes, text(count) + hex("00"));
    EXPECT_EQ(decoded.record, received);
}

template <class Record>
void expect_byte_array(const Operations<Record> &operations, size_t capacity) {
    SCOPED_TRACE(capacity);
    expect_terminator_below_capacity(operations, 0);
    expect_terminator_below_capacity(operations, 1);
    expect_terminator_below_capacity(operations, capacity - 1);

    const Bytes full = byte_array_prefix(capacity, 0) + text(capacity);
    expect_exchange(operations, byte_array_record<Record>(text(capacity)), full);
    expect_null_results(operations, byte_array_record<Record>(text(capacity)), full, {0, Distance()});
    expect_nothing_from_null(operations);

    // Encoding fails only when all the bytes are written; decoding does not.
    const auto overfull = byte_array_record<Record>(text(capacity + 3), 16);
    const Bytes wire = byte_array_prefix(capacity + 3, 0) + text(capacity + 3);
    EXPECT_EQ(operations.size(&*overfull), wire.size());
    const Encoded encoded = encode(operations, overfull, wire.size() + 1);
    EXPECT_EQ(encoded.end, Distance());
    EXPECT_EQ(encoded.bytes, wire + Bytes(1, untouched));
    expect_decoded(operations, wire, wire.size(), overfull, Image<Record>(16));
}

TEST(ByteArray, IsTerminatedBelowItsCapacityAndUnboundedAbove) {
    expect_byte_array(OPERATIONS(zel_mac_addr_mac_array), 6);
    expect_byte_array(OPERATIONS(en_address_addr_array), 6);
    expect_byte_array(OPERATIONS(ipv4_maddr_addr_array), 8);
    expect_byte_array(OPERATIONS(time_second_time_array), 9);
    expect_byte_array(OPERATIONS(ipv6_addr_addr_array), 16);
    expect_byte_array(OPERATIONS(ipv6_maddr_addr_array), 32);
    expect_byte_array(OPERATIONS(zel_analogbri_ds0_dump_req_destination_array), 335);
    expect_byte_array(OPERATIONS(kavu_analogbri_generic_report_buffer_array), 1900);
}

const auto mac_addr = OPERATIONS(zel_mac_addr);

// Inside of a structure, whose length alone says where it ends. A bad count is a count of zero.
TEST(ByteArray, EndsByTheStructuresLength) {
    Image<zel_mac_addr> record;
    record->mac = {6, {1, 2, 3, 4, 5, 6}};
    const Bytes full = hex("04 12 00 10  00 0A 00 0C  00 04 00 02 00 06  01 02 03 04 05 06");
    expect_exchange(mac_addr, record, full);
    expect_null_results(mac_addr, record, full, {0, 20});
    expect_decoded(mac_addr, hex("04 12 00 01  00 0A FF FF  00 04 00 02 00 06  01 02 03 04 05 06"), 5,
                   record);

    record = Image<zel_mac_addr>();
    record->mac.count = 0;
    record.put(record->mac.bytes, hex("00"));
    expect_exchange(mac_addr, record, hex("04 12 00 0B  00 0A 00 07  00 04 00 02 00 00  00"));
    expect_decoded(mac_addr, hex("04 12 00 10  00 0A 00 0C  00 04 00 03") + Bytes(8, 1), 20, record);
}

} // namespace

} // namespace tlvmsg_test
