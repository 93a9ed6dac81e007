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
        if (type.kind == TLVMSG_MESSAGE) {
            const Sample sample(type, i, Counts::One, 0);
            const Bytes bytes = sample.encoded();
            const bool begins = type.members[0].type == tlvmsg_descriptor_app_sess_hdr();
            uint32_t key = 99;
            EXPECT_EQ(tlvmsg_session_key(bytes.data(), bytes.size(), &key), begins) << type.name;
            tlvmsg_key_place place{};
            EXPECT_TRUE(!begins || tlvmsg_key_field(&type, &place));
            EXPECT_TRUE(begins ? std::memcmp(&key, sample.record() + place.offset, sizeof key) == 0
                               : key == 0);
            without += begins ? 0 : 1;
        }
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
        EXPECT_EQ(has, key != 0) << bytes;
        tlvmsg_decode_app_sess_hdr(in.data(), in.size(), nullptr, &session, nullptr, nullptr);
        EXPECT_EQ(key, session.msg_type) << bytes;
    }
    Bytes changed = valid + hex("00 02 00 01 07");
    changed[3] = static_cast<uint8_t>(changed[3] + 5); // what a later release may append
    EXPECT_TRUE(tlvmsg_session_key(changed.data(), changed.size(), nullptr));
    changed[37] = 0xEB; // another type than that of the number
    EXPECT_FALSE(tlvmsg_session_key(changed.data(), changed.size(), nullptr));
}

using Stats = zel_tib_vlan_stats_message;

class Dispatch : public testing::Test {
protected:
    Dispatch() { osal_double_reset(); }
    ~Dispatch() override { EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0U); }

    bool answer(const std::string &text) { return said_ = text, answer_; }

    static bool take(void *context, void *record, const tlvmsg_arrival *arrival) {
        auto &test = *static_cast<Dispatch *>(context);
        if (test.keep_) {
            std::memcpy(&test.kept_, record, sizeof test.kept_);
            std::memset(record, 0, sizeof test.kept_);
        }
        return test.answer(std::string(arrival->type->name) + " of " + std::to_string(arrival->key));
    }
    static bool unknown(void *context, const tlvmsg_arrival *arrival) {
        return static_cast<Dispatch *>(context)->answer("unknown " + std::to_string(arrival->key));
    }
    static bool refused(void *context, const tlvmsg_arrival *, const tlvmsg_fault *fault) {
        return static_cast<Dispatch *>(context)->answer(message(*fault));
    }
    static std::string message(const tlvmsg_fault &fault) {
        char line[TLVMSG_FAULT_TEXT];
        tlvmsg_fault_message(&fault, line, sizeof line);
        return line;
    }

    // What the function says that is called, with "false: " before it when that is the result.
    std::string said(uint64_t key, const Bytes &bytes) {
        said_.clear();
        const bool result =
            tlvmsg_dispatch(routes_.data(), routes_.size(), key, bytes.data(), bytes.size(), &options_, this);
        EXPECT_EQ(osal_double_blocks_out(), keep_ ? 1U : 0U);
        return (result ? "" : "false: ") + said_;
    }

    const Bytes stats_ = Sample(*tlvmsg_descriptor_zel_tib_vlan_stats_message(), 1, Counts::One, 0).encoded();
    const std::string called_ = "zel_tib_vlan_stats_message of 20";
    std::vector<tlvmsg_route> routes_ = {
        {10, tlvmsg_descriptor_app_sess_hdr, sizeof(app_sess_hdr), take, {}},
        {20, tlvmsg_descriptor_zel_tib_vlan_stats_message, sizeof(Stats), take, {}},
        {UINT64_MAX, tlvmsg_descriptor_ifid, 0, take, {}},
    };
    uint64_t room_[64]{};
    tlvmsg_dispatch_options options_{room_, sizeof room_, nullptr, unknown, refused, {}};
    std::string said_;
    bool answer_ = true;
    bool keep_ = false;
    Stats kept_{};
};

TEST_F(Dispatch, CallsTheOneFunctionThatIsForIt) {
    for (const std::string begin : {"", "false: "}) {
        answer_ = begin.empty();
        EXPECT_EQ(said(20, stats_), begin + called_);
        EXPECT_EQ(said(10, stats_), begin + "app_sess_hdr of 10");
        EXPECT_EQ(said(15, stats_), begin + "unknown 15");
        EXPECT_EQ(said(UINT64_MAX, stats_), begin + "ifid: tag 1001 where 1039 belongs at byte 0");
    }
    const tlvmsg_limits strict{0, true, {}};
    options_ = {room_, sizeof room_, &strict, nullptr, nullptr, {}};
    EXPECT_EQ(said(1, stats_) + said(20, stats_ + hex("00")), "false: false: ");
    answer_ = true;
    keep_ = true;
    EXPECT_EQ(said(20, stats_), called_);
    EXPECT_EQ(kept_.vlan_stat_bundle.vlan_counters.count, 1U);
    tlvmsg_release_zel_tib_vlan_stats_message(&kept_);
}

TEST_F(Dispatch, TakesRoomOfAnySizeAnywhere) {
    const size_t size = sizeof(Stats);
    const GuardedBuffer exact(size);
    auto *const shifted = reinterpret_cast<uint8_t *>(room_) + 1;
    const auto refusal = [&](size_t found) {
        return "room: " + std::to_string(found) + " bytes hold no record of " + std::to_string(size);
    };
    const std::tuple<void *, size_t, std::string> rows[] = {
        {room_, size - 1, refusal(size - 1)},
        {exact.data(), size, called_},
        {shifted, size, refusal(size + 1 - alignof(Stats))},
        {shifted, SIZE_MAX, called_},
        {shifted, 3, refusal(0)},
        {nullptr, SIZE_MAX, refusal(0)},
    };
    for (const auto &[at, room_size, wanted] : rows) {
        options_.room = at;
        options_.room_size = room_size;
        EXPECT_EQ(said(20, stats_), wanted);
    }
    options_.reserved[3] = 4;
    EXPECT_EQ(said(20, stats_), "options: reserved words are not zero: 4");
    EXPECT_FALSE(tlvmsg_dispatch(routes_.data(), 3, 20, stats_.data(), stats_.size(), nullptr, this));
    EXPECT_FALSE(tlvmsg_dispatch(nullptr, 3, 20, stats_.data(), stats_.size(), &options_, this));
}

TEST_F(Dispatch, RefusesWrongRoutes) {
    const std::string null_pointer = ": a null pointer was passed";
    const std::tuple<void (*)(tlvmsg_route &), std::string> rows[] = {
        {[](auto &route) { route.type = nullptr; }, null_pointer},
        {[](auto &route) { route.type = [] { return static_cast<const tlvmsg_type *>(nullptr); }; },
         null_pointer},
        {[](auto &route) { route.handle = nullptr; }, null_pointer},
        {[](auto &route) { route.record_size = 1; },
         ": a record of 1 bytes, the library's has " + std::to_string(sizeof(Stats))},
        {[](auto &route) { route.reserved[1] = 2; }, ": reserved words are not zero: 2"},
        {[](auto &route) { route.key = 10; }, ": both have key 10"},
        {[](auto &route) { route.key = 9; }, ": they stand in this order and belong in the other"},
    };
    size_t largest = 0;
    EXPECT_TRUE(tlvmsg_check_routes(routes_.data(), routes_.size(), &largest, nullptr));
    EXPECT_EQ(largest, sizeof(Stats));
    for (const auto &[damage, wanted] : rows) {
        const tlvmsg_route good = routes_[1];
        damage(routes_[1]);
        tlvmsg_fault fault;
        EXPECT_FALSE(tlvmsg_check_routes(routes_.data(), routes_.size(), &largest, &fault));
        EXPECT_EQ(message(fault), (routes_[1].key < 20 ? "routes[0] and routes[1]" : "routes[1]") + wanted);
        EXPECT_EQ(largest, 0U);
        EXPECT_EQ(said(20, stats_), routes_[1].key < 20 ? "unknown 20" : "route" + wanted);
        routes_[1] = good;
    }
}

// In whatever order routes stand, a handler gets what has its key, and of damaged bytes what decoding accepts.
TEST_F(Dispatch, KeepsToTheKeyAndToWhatDecodingSays) {
    std::mt19937_64 random(2);
    const tlvmsg_type &type = *tlvmsg_descriptor_zel_tib_vlan_stats_message();
    const Mutator mutator(type, stats_);
    for (uint64_t key = 0; key < 9; ++key) {
        routes_.insert(routes_.begin(), {key, routes_.rbegin()[1].type, sizeof(Stats), take, {}});
    }
    int taken_or_refused[2] = {0, 0};
    for (int i = 0; i < 3000; ++i) {
        std::shuffle(routes_.begin(), routes_.end(), random);
        Bytes bytes = mutator.mutated(random);
        bytes.resize(i % 3 == 0 ? random() % (bytes.size() + 1) : bytes.size());
        const uint64_t key = random() % 9;
        const std::string result = said(key, bytes);
        if (result.find("they stand in this order") == std::string::npos) {
            const bool good = tlvmsg_verify(&type, bytes.data(), bytes.size(), nullptr, nullptr, nullptr);
            EXPECT_EQ(result == "zel_tib_vlan_stats_message of " + std::to_string(key), good) << result;
            ++taken_or_refused[good ? 0 : 1];
        }
    }
    EXPECT_GT(std::min(taken_or_refused[0], taken_or_refused[1]), 100);
}

} // namespace

} // namespace tlvmsg_test
