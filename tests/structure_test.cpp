// Enumerations and structures: what is exchanged, and what a structure decoder makes of an element that is
// not quite what it expects.
#include "support/operations.h"

#include <tlvmsg/common.h>
#include <tlvmsg/ethernet.h>
#include <tlvmsg/voice.h>

namespace tlvmsg_test {

namespace {

const auto color = OPERATIONS(zel_led_color);
const auto led_control = OPERATIONS(zel_led_control);

TEST(Enumeration, IsAUint32InsideItsOwnElement) {
    Image<zel_led_color> any_value;
    *any_value = 0x8000FF01;
    const Bytes wire = hex("05 52 00 08  00 06 00 04 80 00 FF 01");
    expect_exchange(color, any_value, wire);
    expect_null_results(color, any_value, wire, {12, Distance()});
    expect_nothing_from_null(color);
}

// Neither too long nor too short an own length changes what is read, or where the element is taken to end.
TEST(Enumeration, OwnLengthIsIgnored) {
    for (const char *header : {"05 52 00 14", "05 52 00 00", "05 52 00 07"}) {
        const auto decoded = decode(color, hex(header) + hex("00 06 00 04 00 00 00 03"));
        EXPECT_EQ(decoded.end, 12U) << header;
        EXPECT_EQ(*decoded.record, 3U);
    }
}

TEST(Enumeration, FailsUnlessTagAndInnerElementAreExact) {
    for (const char *wire : {"05 53 00 08", "00 06 00 04", "05 52 00 08 00 07 00 04 00 00 00 03",
                             "05 52 00 08 00 06 00 08 00 00 00 03", "05 52 00 06 00 04 00 02 00 03",
                             "05 52 00 08 05 52 00 08 00 00 00 03"}) {
        expect_decoded(color, hex(wire), Distance(), Image<zel_led_color>());
    }
}

Image<zel_led_control> led_record(size_t decoded_members = 3) {
    Image<zel_led_control> record;
    if (decoded_members > 0) {
        record->slot = 0x1122;
    }
    if (decoded_members > 1) {
        record->port = 0x3344;
    }
    if (decoded_members > 2) {
        record->color = 0x55667788;
    }
    return record;
}

const char *const slot = "00 04 00 02 11 22 ";
const char *const port = "00 04 00 02 33 44 ";
const char *const led_color = "05 52 00 08 00 06 00 04 55 66 77 88 ";

const Bytes led_wire = hex("05 4D 00 18") + hex(slot) + hex(port) + hex(led_color);

TEST(Structure, IsItsMembersInsideItsOwnElement) {
    expect_exchange(led_control, led_record(), led_wire);
    expect_null_results(led_control, led_record(), led_wire, {28, 28});
    expect_nothing_from_null(led_control);
}

TEST(Structure, FailsOnlyOnAWrongOwnTag) {
    for (const char *header : {"05 4C 00 18", "05 4E 00 18", "04 4D 00 18", "00 00 00 18"}) {
        expect_decoded(led_control, hex(header), Distance(), Image<zel_led_control>());
        EXPECT_EQ(led_control.decode(hex(header).data(), nullptr), nullptr);
    }
}

const std::string slot_and_port = std::string(slot) + port;
const std::string all_members = slot_and_port + led_color;

TEST(Structure, ToleratesWhateverIsInsideItsElement) {
    const struct {
        std::string wire;
        size_t end;     // by the own length
        size_t members; // that are decoded, in order
    } cases[] = {
        // The end follows the own length, the members follow each other.
        {"05 4D 00 28" + all_members, 44, 3},
        {"05 4D 00 06" + all_members, 10, 3},
        {"05 4D 00 00" + all_members, 4, 3},
        {"05 4D FF FF" + all_members, 65539, 3},
        // Foreign elements end the decoding at their headers.
        {"05 4D 00 18 00 05 00 02", 28, 0},
        {"05 4D 00 1A 00 04 00 04", 30, 0},
        {"05 4D 00 12" + std::string(slot) + "05 52 00 08", 22, 1},
        {"05 4D 00 18" + std::string(slot) + "00 05 00 02", 28, 1},
        {"05 4D 00 0C" + slot_and_port + "05 4E 00 18", 16, 2},
        {"05 4D 00 18" + slot_and_port + "05 53 00 08", 28, 2},
        {"05 4D 00 14" + slot_and_port + "00 06 00 04", 24, 2},
        {"05 4D 00 18" + slot_and_port + "05 52 00 08 00 07 00 04", 28, 2},
        {"05 4D 00 18" + slot_and_port + "05 52 00 08 00 06 00 08", 28, 2},
        // Lengths of enumerations count for nothing.
        {"05 4D 00 18" + slot_and_port + "05 52 00 14 00 06 00 04 55 66 77 88", 28, 3},
        {"05 4D 00 18" + slot_and_port + "05 52 00 00 00 06 00 04 55 66 77 88", 28, 3},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.wire);
        // What the own length covers may be read, besides the headers behind it that the chain of members meets.
        Bytes wire = hex(each.wire);
        wire.resize(std::max(wire.size(), each.end), 0xFF);
        expect_decoded(led_control, wire, each.end, led_record(each.members));
    }
}

// Each bit of each header decides how far the members get, but for the length of an enumeration.
TEST(Structure, LooksAtEveryBitOfItsHeaders) {
    const struct {
        size_t begin, end; // of bytes that are all headers
        size_t members;    // are decoded when a bit in there is wrong
    } headers[] = {{4, 8, 0}, {10, 14, 1}, {16, 18, 2}, {18, 20, 3}, {20, 24, 2}};
    for (const auto &[begin, end, members] : headers) {
        for (size_t bit = begin * 8; bit < end * 8; ++bit) {
            SCOPED_TRACE(bit);
            Bytes changed = led_wire;
            changed[bit / 8] = static_cast<uint8_t>(changed[bit / 8] ^ (1 << bit % 8));
            expect_decoded(led_control, changed, led_wire.size(), led_record(members));
        }
    }
}

// The seventh byte of a six-byte address fails the address, once it is written, and all that would follow.
TEST(Structure, EncodingStopsAtTheMemberThatFails) {
    Image<mac_acct_stats> record;
    record->mac_addr.mac.count = 7;
    record.put(record->mac_addr.mac.bytes, hex("01 02 03 04 05 06 07"));
    const auto operations = OPERATIONS(mac_acct_stats);
    EXPECT_EQ(operations.size(&*record), 57);
    const Encoded encoded = encode(operations, record, 57);
    EXPECT_EQ(encoded.end, Distance());
    EXPECT_EQ(encoded.bytes,
              hex("04 6B 00 35  04 12 00 11  00 0A 00 0D  00 04 00 02 00 07  01 02 03 04 05 06 07") +
                  Bytes(32, untouched));
}

TEST(Structure, SizeWrapsAt16Bits) {
    Image<zel_bri_show_contr_resp> record;
    record->registers.count = 0xFFFF;
    EXPECT_EQ(get_tlv_zel_bri_show_contr_resp_size(&*record), (26 + 2 * 0xFFFF) % 0x10000);
}

} // namespace

} // namespace tlvmsg_test
