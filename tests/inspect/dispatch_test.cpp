// Messages to the functions that take them: every way that a call can end, and bytes and routes that nobody vouches for.
#include "inspect/samples.h"
#include "support/guarded.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/bounded/common.h>
#include <tlvmsg/bounded/ethernet.h>
#include <tlvmsg/dispatch.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <tuple>

namespace tlvmsg_test {

namespace {

TEST(SessionKey, IsThatOfMessagesThatBeginWithASessionHeader) {
    size_t without = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        tlvmsg_key_place place;
        if (type.kind != TLVMSG_MESSAGE) {
            continue;
        }
        const Sample sample(type, i, Counts::One, 0);
        const Bytes bytes = sample.encoded();
        const bool begins = type.members[0].type == tlvmsg_descriptor_app_sess_hdr();
        uint32_t wanted = 0;
        if (begins && tlvmsg_key_field(&type, &place)) {
            std::memcpy(&wanted, sample.record() + place.offset, sizeof wanted);
        }
        uint32_t key = 99;
        EXPECT_EQ(tlvmsg_session_key(bytes.data(), bytes.size(), &key), begins) << type.name;
        EXPECT_EQ(key, wanted) << type.name;
        without += begins ? 0 : 1;
    }
    EXPECT_EQ(without, 44U) << "what dispatch.h says";
}

// Of damaged headers it is what decoding finds, but not the zero that stands for a number that is absent.
TEST(SessionKey, OfDamagedBytesIsWhatDecodingFinds) {
    std::mt19937_64 random(1);
    const Bytes valid = Sample(*tlvmsg_descriptor_app_sess_hdr(), 1, Counts::One, 0).encoded();
    const Mutator mutator(*tlvmsg_descriptor_app_sess_hdr(), valid);
    for (int i = 0; i < 4000; ++i) {
        Bytes bytes = i < 100 ? valid : mutator.mutated(random);
        bytes.resize(std::min<size_t>(bytes.size(), random() % 80));
        const GuardedBuffer in(bytes.size());
        std::copy(bytes.begin(), bytes.end(), in.data());
        uint32_t key = 99;
        app_sess_hdr session;
        const bool has = tlvmsg_session_key(in.data(), in.size(), &key);
        tlvmsg_decode_app_sess_hdr(in.data(), in.size(), nullptr, &session, nullptr, nullptr);
        EXPECT_EQ(key, session.msg_type) << bytes;
        EXPECT_EQ(has, key != 0) << bytes;
    }
    Bytes changed = valid + hex("00 02 00 01 07");
    changed[3] = static_cast<uint8_t>(changed[3] + 5); // what a later release may append
    EXPECT_TRUE(tlvmsg_session_key(changed.data(), changed.size(), nullptr));
    changed[37] = 0xEB; // another type than that of the number
    EXPECT_FALSE(tlvmsg_session_key(changed.data(), changed.size(), nullptr));
}

using Stats = zel_tib_vlan_stats_message;

// What was called, with what.
struct Log {
    std::string said;
    bool answer = true;
    bool keep = false;
    Stats kept{};
};

bool take(void *context, void *record, const tlvmsg_arrival *arrival) {
    auto &log = *static_cast<Log *>(context);
    log.said += std::string(arrival->type->name) + " of " + std::to_string(arrival->key);
    if (log.keep) {
        std::memcpy(&log.kept, record, sizeof log.kept);
        std::memset(record, 0, sizeof log.kept);
    }
    return log.answer;
}

bool unknown(void *context, const tlvmsg_arrival *arrival) {
    static_cast<Log *>(context)->said += "unknown " + std::to_string(arrival->key);
    return static_cast<Log *>(context)->answer;
}

bool refused(void *context, const tlvmsg_arrival *, const tlvmsg_fault *fault) {
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_message(fault, line, sizeof line);
    static_cast<Log *>(context)->said += line;
    return static_cast<Log *>(context)->answer;
}

class Dispatch : public testing::Test {
protected:
    Dispatch() { osal_double_reset(); }
    ~Dispatch() override { EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0U); }

    // What the function says that is called, with "false: " before it when that is the result.
    std::string said(uint64_t key, const Bytes &bytes) {
        log.said.clear();
        const bool result =
            tlvmsg_dispatch(routes.data(), routes.size(), key, bytes.data(), bytes.size(), &options, &log);
        EXPECT_EQ(osal_double_blocks_out(), log.keep ? 1U : 0U);
        return (result ? "" : "false: ") + log.said;
    }

    const Bytes stats = Sample(*tlvmsg_descriptor_zel_tib_vlan_stats_message(), 1, Counts::One, 0).encoded();
    const std::string called = "zel_tib_vlan_stats_message of 20";
    std::vector<tlvmsg_route> routes = {
        {10, tlvmsg_descriptor_app_sess_hdr, sizeof(app_sess_hdr), take, {}},
        {20, tlvmsg_descriptor_zel_tib_vlan_stats_message, sizeof(Stats), take, {}},
        {UINT64_MAX, tlvmsg_descriptor_ifid, 0, take, {}},
    };
    uint64_t room[64]{};
    tlvmsg_dispatch_options options{room, sizeof room, nullptr, unknown, refused, {}};
    Log log;
};

TEST_F(Dispatch, CallsTheOneFunctionThatIsForIt) {
    const tlvmsg_limits strict{0, true, {}};
    for (const bool answer : {true, false}) {
        log.answer = answer;
        const std::string begin = answer ? "" : "false: ";
        EXPECT_EQ(said(20, stats), begin + called);
        EXPECT_EQ(said(10, stats), begin + "app_sess_hdr of 10");
        EXPECT_EQ(said(15, stats), begin + "unknown 15");
        EXPECT_EQ(said(UINT64_MAX, stats), begin + "ifid: tag 1001 where 1039 belongs at byte 0");
        options.limits = &strict;
        EXPECT_NE(said(20, stats + hex("00")).find("1 bytes behind the end"), std::string::npos);
        options.limits = nullptr;
    }
    osal_double_fail(1, 0);
    EXPECT_NE(said(20, stats).find("no memory for"), std::string::npos);
    options.unknown = nullptr;
    options.refused = nullptr;
    log.answer = true;
    EXPECT_EQ(said(1, stats) + said(UINT64_MAX, stats), "false: false: ");
    log.keep = true;
    EXPECT_EQ(said(20, stats), called);
    EXPECT_EQ(log.kept.vlan_stat_bundle.vlan_counters.count, 1U);
    tlvmsg_release_zel_tib_vlan_stats_message(&log.kept);
}

TEST_F(Dispatch, TakesRoomOfAnySizeAnywhere) {
    const size_t size = sizeof(Stats);
    const GuardedBuffer exact(size);
    auto *const shifted = reinterpret_cast<uint8_t *>(room) + 1;
    const auto refusal = [&](size_t found) {
        return "room: " + std::to_string(found) + " bytes hold no record of " + std::to_string(size);
    };
    const std::tuple<void *, size_t, std::string> rows[] = {
        {room, size - 1, refusal(size - 1)}, {exact.data(), size, called}, {shifted, size, refusal(size - 7)},
        {shifted, SIZE_MAX, called},         {shifted, 3, refusal(0)},     {nullptr, SIZE_MAX, refusal(0)},
    };
    for (const auto &[at, room_size, wanted] : rows) {
        options.room = at;
        options.room_size = room_size;
        EXPECT_EQ(said(20, stats), wanted);
    }
    options.reserved[3] = 4;
    EXPECT_EQ(said(20, stats), "options: reserved words are not zero: 4");
    EXPECT_FALSE(tlvmsg_dispatch(routes.data(), 3, 20, stats.data(), stats.size(), nullptr, &log));
    EXPECT_FALSE(tlvmsg_dispatch(nullptr, 3, 20, stats.data(), stats.size(), &options, &log));
}

TEST_F(Dispatch, RefusesWrongRoutes) {
    const std::tuple<void (*)(tlvmsg_route &), std::string, std::string> rows[] = {
        {[](auto &route) { route.type = nullptr; }, "route", ": a null pointer was passed"},
        {[](auto &route) { route.type = [] { return static_cast<const tlvmsg_type *>(nullptr); }; }, "route",
         ": a null pointer was passed"},
        {[](auto &route) { route.handle = nullptr; }, "route", ": a null pointer was passed"},
        {[](auto &route) { route.record_size = 1; }, "route",
         ": a record of 1 bytes, the library's has " + std::to_string(sizeof(Stats))},
        {[](auto &route) { route.reserved[1] = 2; }, "route", ": reserved words are not zero: 2"},
        {[](auto &route) { route.key = 10; }, "", ": both have key 10"},
        {[](auto &route) { route.key = 9; }, "", ": they stand in this order and belong in the other"},
    };
    size_t largest = 0;
    EXPECT_TRUE(tlvmsg_check_routes(routes.data(), routes.size(), &largest, nullptr));
    EXPECT_EQ(largest, sizeof(Stats));
    for (const auto &[damage, path, message] : rows) {
        const tlvmsg_route good = routes[1];
        damage(routes[1]);
        if (!path.empty()) {
            EXPECT_EQ(said(20, stats), path + message);
        }
        tlvmsg_fault fault;
        char line[TLVMSG_FAULT_TEXT];
        EXPECT_FALSE(tlvmsg_check_routes(routes.data(), routes.size(), &largest, &fault));
        tlvmsg_fault_message(&fault, line, sizeof line);
        EXPECT_EQ(line, (path.empty() ? "routes[0] and routes[1]" : "routes[1]") + message);
        EXPECT_EQ(largest, 0U);
        routes[1] = good;
    }
}

// In whatever order routes stand, a handler gets what has its key, and of damaged bytes what decoding accepts.
TEST_F(Dispatch, KeepsToTheKeyAndToWhatDecodingSays) {
    std::mt19937_64 random(2);
    const Mutator mutator(*tlvmsg_descriptor_zel_tib_vlan_stats_message(), stats);
    for (uint64_t key = 1; key < 10; ++key) {
        routes.insert(routes.begin(), {key * 3 % 10, routes.rbegin()[1].type, sizeof(Stats), take, {}});
    }
    int called_or_refused[2] = {0, 0};
    for (int i = 0; i < 3000; ++i) {
        Bytes bytes = mutator.mutated(random);
        bytes.resize(i % 3 == 0 ? random() % (bytes.size() + 1) : bytes.size());
        const uint64_t key = 1 + random() % 9;
        const bool good =
            tlvmsg_verify_zel_tib_vlan_stats_message(bytes.data(), bytes.size(), nullptr, nullptr, nullptr);
        const std::string result = said(key, bytes);
        if (result.find("they stand in this order") == std::string::npos) {
            EXPECT_EQ(result == "zel_tib_vlan_stats_message of " + std::to_string(key), good) << result;
            ++called_or_refused[good ? 0 : 1];
        }
        std::shuffle(routes.begin(), routes.end(), random);
    }
    EXPECT_GT(std::min(called_or_refused[0], called_or_refused[1]), 100);
}

} // namespace

} // namespace tlvmsg_test
