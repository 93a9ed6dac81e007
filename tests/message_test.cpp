// Messages: members in a row without an element around them, decoded into a record that is cleared first.
#include "support/operations.h"

#include <tlvmsg/common.h>
#include <tlvmsg/voice.h>

namespace tlvmsg_test {

namespace {

const Bytes session_values = hex("00 06 00 04 00 00 00 11  00 06 00 04 00 00 00 12"
                                 "00 06 00 04 00 00 00 13  00 06 00 04 00 00 00 14");
const Bytes session = hex("03 E9 00 2C") + session_values + hex("03 EA 00 08 00 06 00 04 00 00 00 15");
const Bytes interface = hex("04 0F 00 28  00 06 00 04 00 00 00 21  00 06 00 04 00 00 00 22"
                            "00 06 00 04 00 00 00 23  00 06 00 04 00 00 00 24  00 06 00 04 00 00 00 25");
const Bytes led =
    hex("05 4D 00 18  00 04 00 02 00 02  00 04 00 02 00 07  05 52 00 08 00 06 00 04 00 00 00 03");

constexpr app_sess_hdr session_record = {0x11, 0x12, 0x13, 0x14, 0x15};
constexpr ifid interface_record = {0x21, 0x22, 0x23, 0x24, 0x25};

using LedRequest = analogbri_led_control_req_message;
const auto led_request = OPERATIONS(analogbri_led_control_req_message);

Image<LedRequest> led_record() {
    Image<LedRequest> record;
    *record = {session_record, interface_record, {2, 7, 3}};
    return record;
}

TEST(Message, IsItsMembersAndNothingElse) {
    const Bytes wire = session + interface + led;
    ASSERT_EQ(wire.size(), 120U);
    expect_exchange(led_request, led_record(), wire);
    expect_null_results(led_request, led_record(), wire, {120, Distance()});
}

TEST(Message, DecoderClearsTheRecordEvenWithoutInput) {
    Image<LedRequest> record;
    EXPECT_EQ(led_request.decode(nullptr, &*record), nullptr);
    EXPECT_EQ(record, zeroed<LedRequest>());

    expect_decoded(led_request, hex("03 E8 00 2C"), Distance(), zeroed<LedRequest>());
}

TEST(Message, FailsWhenAMemberIsMissing) {
    auto expected = zeroed<LedRequest>();
    expected->session = session_record;
    expect_decoded(led_request, session + led, Distance(), expected);

    expected->interface = interface_record;
    expect_decoded(led_request, session + interface + hex("05 4C 00 18"), Distance(), expected);
}

// Below the tags of its members nothing makes a message fail: a session header that announces more than its
// members, or holds fewer, still leads to the interface, and the message ends where its last member says.
TEST(Message, FollowsTheLengthsOfItsMembers) {
    const auto expect_led = [](const Bytes &wire, size_t end, uint32_t msg_type,
                               const zel_led_control &led_control) {
        auto expected = led_record();
        expected->session.msg_type = msg_type;
        expected->led_control = led_control;
        expect_decoded(led_request, wire, end, expected);
    };
    const Bytes longer = hex("03 E9 00 3C") + Bytes(session.begin() + 4, session.end()) + Bytes(16, 0xFF);
    expect_led(longer + interface + led, 136, 0x15, {2, 7, 3});
    expect_led(hex("03 E9 00 20") + session_values + interface + led, 108, 0, {2, 7, 3});
    const Bytes short_led = hex("05 4D 00 40  00 04 00 02 00 02  00 04 00 02 00 07  05 53 00 08");
    expect_led(session + interface + short_led, 160, 0x15, {2, 7, 0});
    expect_led(session + interface + hex("05 4D 00 00 00 00 00 00"), 96, 0x15, {0, 0, 0});
}

// An enumeration ends behind its 12 bytes, and can fail by what is inside.
TEST(Message, MayEndWithAnEnumeration) {
    const auto operations = OPERATIONS(bri_L1_function_message);
    auto record = zeroed<bri_L1_function_message>();
    record->session = session_record;
    record->interface = interface_record;
    const Bytes leading = session + interface + hex("05 AD 00 00");
    expect_decoded(operations, leading + hex("05 B5 00 08 00 07 00 04 00 00 00 08"), Distance(), record);
    record->function = 8;
    expect_decoded(operations, leading + hex("05 B5 00 14 00 06 00 04 00 00 00 08"), leading.size() + 12,
                   record);
}

// One structure alone: its element, but into a cleared record.
using Report = zel_kavu_analogbri_generic_report_message;
const auto report = OPERATIONS(zel_kavu_analogbri_generic_report_message);

Image<Report> report_record(uint8_t value, uint16_t count, const Bytes &text) {
    auto record = zeroed<Report>(8);
    record->generic_report.value = value;
    record->generic_report.buffer.count = count;
    std::fill(record.bytes().end() - 8, record.bytes().end(), untouched);
    record.put(record->generic_report.buffer.bytes, text);
    return record;
}

TEST(Message, OfOneStructureIsThatStructure) {
    const Bytes wire = hex("05 45 00 10  00 02 00 01 09  00 0A 00 07  00 04 00 02 00 00  00");
    expect_exchange(report, report_record(9, 0, {}), wire);
    expect_null_results(report, report_record(9, 0, {}), wire, {0, Distance()});
    Image<Report> record(8);
    EXPECT_EQ(report.decode(nullptr, &*record), nullptr);
    EXPECT_EQ(record, report_record(0, 0, {}));
}

// Whatever there is of it, the record is otherwise clear. Without its array it says how much it could hold.
TEST(Message, OfOneStructureDecodesIntoAClearedRecord) {
    const Bytes value = hex("05 45 00 40  00 02 00 01 09");
    expect_decoded(report, value + hex("00 0A 00 0A  00 04 00 02 00 03  61 62 63"), 68,
                   report_record(9, 3, hex("61 62 63")));
    expect_decoded(report, value + hex("00 0A 00 00  00 04 00 02 07 6F") + Bytes(1903, 'x'), 68,
                   report_record(9, 1903, Bytes(1903, 'x')));
    expect_decoded(report, value + hex("00 0A 00 0A  00 02 00 01 03"), 68, report_record(9, 0, {}));
    expect_decoded(report, value + hex("05 45 00 40"), 68, report_record(9, 1900, {}));
    expect_decoded(report, hex("05 45 00 40  00 03 00 01"), 68, report_record(0, 1900, {}));
    expect_decoded(report, hex("05 44 00 10"), Distance(), report_record(0, 0, {}));
}

} // namespace

} // namespace tlvmsg_test
