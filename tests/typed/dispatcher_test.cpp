// Messages to functions of C++, and descriptors to types.
#include "forms/failing_new.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/all.hpp>
#include <tlvmsg/tlvmsg_dispatch.hpp>

#include <gtest/gtest.h>

namespace tlvmsg_test {

namespace {

using Stats = zel_tib_vlan_stats_message;

size_t news;

struct Peer {
    std::string_view last;
    tlvmsg::owned<Stats> kept;
};

TEST(Dispatcher, HandsEachMessageToTheFunctionOfItsKey) {
    osal_double_reset();
    {
        tlvmsg::owned<Stats> stats;
        ASSERT_TRUE(tlvmsg::resize(stats->vlan_stat_bundle.vlan_counters, 2));
        const std::vector<uint8_t> bytes = *tlvmsg::encode(stats);
        tlvmsg::dispatcher<Peer &, int> dispatcher;
        for (const uint64_t key : {uint64_t{7}, UINT64_MAX, uint64_t{0}, uint64_t{3}}) {
            dispatcher.on<ifid>(key, [](const ifid &, Peer &to, int) { return to.last = "ifid", false; });
        }
        dispatcher.on<Stats>(7, [number = 1](tlvmsg::owned<Stats> &&taken, Peer &to, int context) mutable {
            to.kept = std::move(taken);
            to.last = ++number == context ? "stats" : "another context";
        });
        dispatcher.on<Stats>(8, [](const Stats &, Peer &to, int) { to.last = "stats 8"; });
        Peer peer;
        EXPECT_FALSE(dispatcher.dispatch(1, bytes, peer, 0) || dispatcher.dispatch(3, bytes, peer, 0));
        EXPECT_EQ(peer.last, "");
        dispatcher.unknown([](const tlvmsg_arrival &arrival, Peer &to, int) {
            to.last = arrival.key == 1 && arrival.type == nullptr ? "unknown" : "another arrival";
        });
        dispatcher.refused([](const tlvmsg::fault &fault, const tlvmsg_arrival &arrival, Peer &to, int) {
            to.last = fault.code == TLVMSG_WRONG_TAG ? arrival.type->name : "another fault";
            return false;
        });

        before_new = [](size_t) { ++news; };
        const auto called = [&](uint64_t key, bool result, std::span<const uint8_t> from) {
            EXPECT_EQ(dispatcher.dispatch(key, from, peer, 2), result);
            return peer.last;
        };
        EXPECT_EQ(called(7, true, bytes), "stats");
        EXPECT_TRUE(peer.kept == stats);
        EXPECT_EQ(called(8, true, bytes), "stats 8");
        EXPECT_EQ(called(1, true, bytes), "unknown");
        EXPECT_EQ(called(3, false, std::span(bytes).subspan(48)), "ifid");
        peer.last = "";
        EXPECT_EQ(called(UINT64_MAX, false, bytes), "ifid") << "that is refused";
        EXPECT_EQ(tlvmsg::session_key(bytes).value_or(9), 0U);
        EXPECT_EQ(tlvmsg::session_key(std::span(bytes).subspan(1)), std::nullopt);
        before_new = nullptr;
        EXPECT_EQ(news, 0U) << "nothing is allocated but blocks";
    }
    EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0U);
}

#define LIST(DO)                                                                                             \
    DO(cellular)                                                                                             \
    DO(common)                                                                                               \
    DO(ethernet) DO(macsec) DO(module) DO(netsync) DO(qos) DO(server) DO(switch) DO(tdm) DO(voice) DO(xdsl)
#define VISIT(FAMILY)                                                                                        \
    in_messages = in_messages || tlvmsg::visit_type<tlvmsg::messages_of_##FAMILY>(type, [](auto) {});        \
    in_types = in_types || tlvmsg::visit_type<tlvmsg::types_of_##FAMILY>(type, compare);
#define COUNT(X) +1
#define COUNT_TYPES(FAMILY) TLVMSG_TYPES_OF_##FAMILY(COUNT)

TEST(Lists, HaveEachTypeThatHasARecordOfItsOwn) {
    int listed = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        const auto compare = [&](auto known) {
            EXPECT_EQ(&tlvmsg::traits<typename decltype(known)::type>::type(), &type);
            ++listed;
        };
        bool in_messages = false;
        bool in_types = false;
        LIST(VISIT)
        EXPECT_EQ(in_messages, type.kind == TLVMSG_MESSAGE) << type.name;
        EXPECT_TRUE(in_types || type.kind <= TLVMSG_ENUMERATION || type.kind == TLVMSG_UNION) << type.name;
    }
    EXPECT_EQ(listed, 0 LIST(COUNT_TYPES));
    const tlvmsg_type copy = *tlvmsg_descriptor_ifid();
    EXPECT_FALSE(tlvmsg::visit_type<tlvmsg::types_of_common>(copy, [](auto) { FAIL(); }));
}

} // namespace

} // namespace tlvmsg_test
