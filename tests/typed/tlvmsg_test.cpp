// Records, results and arrays as C++ programs have them.
#include "support/osal_double/osal_double.h"

#include <tlvmsg/common.hpp>
#include <tlvmsg/ethernet.hpp>
#include <tlvmsg/netsync.hpp>
#include <tlvmsg/voice.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <utility>

namespace tlvmsg_test {

namespace {

using namespace std::string_view_literals;
using Led = zel_led_control;

// Every test begins and ends with no block out.
class Tlvmsg : public testing::Test {
protected:
    Tlvmsg() { osal_double_reset(); }
    ~Tlvmsg() override {
        EXPECT_EQ(osal_double_blocks_out(), 0U);
        EXPECT_EQ(osal_double_faults(), 0U);
    }
};

tlvmsg::owned<if_name> named(std::string_view text) {
    tlvmsg::owned<if_name> record;
    EXPECT_TRUE(tlvmsg::assign(record->name, text));
    return record;
}

TEST_F(Tlvmsg, TakesWhatItEncodedBack) {
    const Led led = {2, 5, 3};
    const auto bytes = tlvmsg::encode(led);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), *tlvmsg::encoded_size(led));

    size_t consumed = 0;
    const auto decoded = tlvmsg::decode<Led>(*bytes, tlvmsg::strict, &consumed);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(consumed, bytes->size());
    EXPECT_EQ(decoded->color, 3U);
    EXPECT_TRUE(tlvmsg::equal(decoded.value, led));
    EXPECT_EQ(tlvmsg::verify<Led>(*bytes)->consumed, bytes->size());

    std::array<std::byte, 40> out{};
    const auto written = tlvmsg::encode(decoded.value, std::span(out));
    ASSERT_TRUE(written);
    EXPECT_EQ(written->size(), bytes->size());
    EXPECT_TRUE(tlvmsg::decode<Led>(*written));
}

TEST_F(Tlvmsg, SaysWhatIsWrong) {
    auto bytes = *tlvmsg::encode(Led{2, 5, 3});
    bytes.pop_back();
    const auto decoded = tlvmsg::decode<Led>(bytes);
    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.fault.code, TLVMSG_TRUNCATED);
    EXPECT_EQ(decoded.fault.name(), "truncated"sv);
    EXPECT_EQ(std::string_view(decoded.fault.text()),
              "error[truncated]: " + std::string(decoded.fault.message()));
    EXPECT_EQ(tlvmsg::verify<Led>(bytes).fault.offset, decoded.fault.offset);
    EXPECT_EQ(decoded->color, 0U);

    std::array<uint8_t, 27> small{};
    const auto written = tlvmsg::encode(Led{}, std::span(small));
    EXPECT_EQ(written.fault.code, TLVMSG_OUTPUT_FULL);
    EXPECT_TRUE(written->empty());

    zel_mac_addr address{};
    address.mac.count = 7;
    const auto none = tlvmsg::encode(address);
    EXPECT_EQ(none.fault.code, TLVMSG_COUNT_EXCEEDS_CAPACITY);
    EXPECT_TRUE(none->empty());
    EXPECT_EQ(std::string_view(none.fault.text()),
              "error[count-exceeds-capacity]: zel_mac_addr.mac.count: 7 exceeds capacity 6 at byte 4"sv);
}

TEST_F(Tlvmsg, OwnsRecords) {
    auto first = named("eth0");
    auto second = std::move(first);
    EXPECT_EQ(tlvmsg::text(second->name), "eth0"sv);
    EXPECT_TRUE(tlvmsg::text(first->name).empty()); // NOLINT: what a move leaves is defined

    second = named("eth1");
    EXPECT_EQ(osal_double_blocks_out(), 1U);
    auto &itself = second;
    second = std::move(itself);
    EXPECT_EQ(tlvmsg::text(second->name), "eth1"sv);

    auto copied = tlvmsg::copy(second);
    ASSERT_TRUE(copied);
    EXPECT_TRUE(*copied == second);
    tlvmsg::bytes(copied->name)[3] = '2';
    EXPECT_FALSE(copied.value == second);

    auto adopted = tlvmsg::owned<if_name>::adopt(second.release());
    EXPECT_EQ(second->name.bytes, nullptr);
    EXPECT_EQ(tlvmsg::text(adopted->name), "eth1"sv);
    adopted.reset();
    EXPECT_EQ(adopted->name.count, 0U);

    const auto bytes = tlvmsg::encode(copied.value);
    osal_double_fail(1, 0);
    EXPECT_EQ(tlvmsg::decode<if_name>(*bytes).fault.code, TLVMSG_OUT_OF_MEMORY);
    osal_double_fail(1, 0);
    EXPECT_EQ(tlvmsg::copy(*copied).fault.code, TLVMSG_OUT_OF_MEMORY);
}

TEST_F(Tlvmsg, ReusesWhatIsThere) {
    auto record = named("eth0");
    std::string out = "head";
    const auto bytes = tlvmsg::append(named("eth1"), out, 2);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(out.substr(0, 6), "head\0\0"sv);
    EXPECT_EQ(out.size(), 6 + bytes->size());
    EXPECT_EQ(tlvmsg::decode(*bytes, record).value, bytes->size());
    EXPECT_EQ(tlvmsg::text(record->name), "eth1"sv);
    EXPECT_EQ(osal_double_blocks_out(), 1U);
    EXPECT_EQ(tlvmsg::decode(bytes->first(9), record).fault.code, TLVMSG_TRUNCATED);
    EXPECT_TRUE(record->name.bytes == nullptr && record->name.count == 0);
    zel_mac_addr address{};
    std::array<uint8_t, tlvmsg::traits<zel_mac_addr>::max_encoded> all{};
    address.mac.count = 6;
    EXPECT_EQ(tlvmsg::encode(address, all)->size(), all.size());
    address.mac.count = 7;
    EXPECT_FALSE(tlvmsg::append(address, out, 100));
    EXPECT_EQ(out.size(), 6 + bytes->size());
}

TEST_F(Tlvmsg, ShowsNoMoreOfAnArrayThanIsThere) {
    zel_mac_addr_mac_array mac{};
    mac.count = 200;
    EXPECT_EQ(tlvmsg::bytes(mac).size(), 6U);
    EXPECT_EQ(tlvmsg::text(std::as_const(mac)).size(), 6U);

    zel_vlan_stat_bundle_vlan_counters_array counters{};
    counters.count = 3;
    EXPECT_TRUE(tlvmsg::items(counters).empty());
    static_assert(
        std::is_const_v<std::remove_reference_t<decltype(tlvmsg::items(std::as_const(counters))[0])>>);
}

TEST_F(Tlvmsg, SetsArrays) {
    tlvmsg::owned<zel_vlan_stat_bundle> bundle;
    auto &array = bundle->vlan_counters;
    std::vector<zel_vlan_counters> counters(3);
    counters[2].counter_7 = 70;
    ASSERT_TRUE(tlvmsg::assign(array, counters));
    EXPECT_EQ(tlvmsg::items(array)[2].counter_7, 70U);

    const auto more = tlvmsg::resize(array, 5);
    ASSERT_TRUE(more);
    EXPECT_EQ(more->size(), 5U);
    EXPECT_EQ((*more)[2].counter_7, 70U);
    EXPECT_EQ((*more)[4].counter_7, 0U);

    const auto too_many = tlvmsg::resize(array, 256);
    EXPECT_EQ(too_many.fault.code, TLVMSG_COUNT_EXCEEDS_FIELD);
    osal_double_fail(1, 0);
    EXPECT_EQ(tlvmsg::resize(array, 6).fault.code, TLVMSG_OUT_OF_MEMORY);
    EXPECT_EQ(tlvmsg::items(array).size(), 5U);
    ASSERT_TRUE(tlvmsg::assign(array, {}));
    EXPECT_EQ(array.items, nullptr);

    zel_mac_addr address{};
    EXPECT_TRUE(tlvmsg::assign(address.mac, std::array<uint8_t, 6>{1, 2, 3, 4, 5, 6}));
    const auto full = tlvmsg::assign(address.mac, "seven b"sv);
    EXPECT_EQ(full.fault.code, TLVMSG_COUNT_EXCEEDS_CAPACITY);
    EXPECT_EQ(tlvmsg::bytes(address.mac)[5], 6);
    const auto longest = named(std::string(255, 'x'));
    EXPECT_EQ(tlvmsg::text(longest->name).size(), 255U);
}

TEST_F(Tlvmsg, TakesAllBytesButThoseBehindALiteral) {
    char packet[8] = "a\0b";
    tlvmsg::owned<if_name> name;
    ASSERT_TRUE(tlvmsg::assign(name->name, packet));
    EXPECT_EQ(tlvmsg::text(name->name), std::string_view(packet, 8));
    ASSERT_TRUE(tlvmsg::assign(name->name, "a\0b"));
    EXPECT_EQ(tlvmsg::text(name->name), "a");

    const auto bytes = *tlvmsg::encode(named("a\0b"sv));
    char received[64];
    std::copy(bytes.begin(), bytes.end(), received);
    size_t consumed = 0;
    const auto decoded = tlvmsg::decode<if_name>(received, {}, &consumed);
    EXPECT_EQ(tlvmsg::text(decoded->name), "a\0b"sv);
    EXPECT_EQ(consumed, bytes.size());
}

TEST_F(Tlvmsg, ReadsOwnersThatGoAway) {
    const auto name = named("eth0");
    uint32_t sum = 0;
    for (const uint8_t byte : *tlvmsg::encode(name)) { // which outlives its result
        sum += byte;
    }
    const auto bytes = *tlvmsg::encode(name);
    EXPECT_EQ(sum, std::accumulate(bytes.begin(), bytes.end(), 0U));
    EXPECT_EQ(uint32_t{tlvmsg::decode<if_name>(bytes)->name.count}, 4U);
    EXPECT_EQ((**tlvmsg::decode<Led>(*tlvmsg::encode(Led{2, 5, 3}))).color, 3U);
}

// A visitor as users write one: the sum of all numbers of a record.
template <class T>
uint64_t sum_of(const T &value) {
    uint64_t sum = 0;
    if constexpr (std::is_integral_v<T>) {
        sum = static_cast<uint64_t>(value);
    } else if constexpr (tlvmsg::byte_array_type<T>) {
        const auto bytes = tlvmsg::bytes(value);
        sum = std::accumulate(bytes.begin(), bytes.end(), uint64_t{0});
    } else if constexpr (tlvmsg::array_type<T>) {
        for (const auto &item : tlvmsg::items(value)) {
            sum += sum_of(item);
        }
    } else {
        tlvmsg::visit(
            value, [&](std::string_view, const tlvmsg_type &, const auto &member) { sum += sum_of(member); });
    }
    return sum;
}

TEST_F(Tlvmsg, VisitsMembers) {
    tlvmsg::owned<zel_tib_vlan_stats_message> message;
    message->session.msg_type = 1000;
    auto counters = *tlvmsg::resize(message->vlan_stat_bundle.vlan_counters, 2);
    counters[0].vlan_id.id = 100;
    counters[1].counter_10 = 10;
    EXPECT_EQ(sum_of(*message), 1110U);

    tlvmsg::visit(message, [](std::string_view name, const tlvmsg_type &, auto &member) {
        if constexpr (std::is_same_v<decltype(member), app_sess_hdr &>) {
            EXPECT_EQ(name, "session"sv);
            member.msg_type = 7;
        }
    });
    EXPECT_EQ(message->session.msg_type, 7U);
}

} // namespace

} // namespace tlvmsg_test
