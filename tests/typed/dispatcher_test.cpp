// Messages to functions of C++, and descriptors to types.
#include "support/osal_double/osal_double.h"

#include <tlvmsg/all.hpp>
#include <tlvmsg/tlvmsg_dispatch.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

namespace {

size_t news;

} // namespace

void *operator new(size_t size) {
    ++news;
    void *const block = std::malloc(size);
    return block != nullptr ? block : (std::abort(), nullptr);
}
void operator delete(void *block) noexcept { std::free(block); }
void operator delete(void *block, size_t) noexcept { std::free(block); }

namespace tlvmsg_test {

namespace {

using Stats = zel_tib_vlan_stats_message;

struct Peer {
    int calls = 0;
    std::string_view last;
    tlvmsg::owned<Stats> kept;

    void note(std::string_view what) {
        ++calls;
        last = what;
    }
};

TEST(Dispatcher, HandsEachMessageToTheFunctionOfItsKey) {
    osal_double_reset();
    {
        tlvmsg::dispatcher<Peer &, int> dispatcher;
        for (const uint64_t key : {uint64_t{7}, UINT64_MAX, uint64_t{0}, uint64_t{3}}) {
            dispatcher.on<ifid>(key, [](const ifid &, Peer &peer, int) { return peer.note("ifid"), false; });
        }
        dispatcher
            .on<Stats>(7,
                       [number = 1](tlvmsg::owned<Stats> &&stats, Peer &peer, int context) mutable {
                           peer.kept = std::move(stats);
                           peer.note(++number == context ? "stats" : "another context");
                       })
            .on<Stats>(8, [](const Stats &, Peer &peer, int) { peer.note("stats 8"); });

        tlvmsg::owned<Stats> stats;
        ASSERT_TRUE(tlvmsg::resize(stats->vlan_stat_bundle.vlan_counters, 2));
        const std::vector<uint8_t> bytes = *tlvmsg::encode(stats);
        Peer module;
        EXPECT_FALSE(dispatcher.dispatch(1, bytes, module, 0) || dispatcher.dispatch(3, bytes, module, 0));
        EXPECT_EQ(module.calls, 0);
        dispatcher
            .unknown([](const tlvmsg_arrival &arrival, Peer &peer, int) {
                peer.note(arrival.key == 1 && arrival.type == nullptr ? "unknown" : "another arrival");
            })
            .refused([](const tlvmsg::fault &fault, const tlvmsg_arrival &arrival, Peer &peer, int) {
                peer.note(fault.code == TLVMSG_WRONG_TAG && arrival.type == tlvmsg_descriptor_ifid()
                              ? "refused"
                              : "another fault");
                return false;
            });

        const size_t before = news;
        EXPECT_TRUE(dispatcher.dispatch(7, bytes, module, 2));
        EXPECT_EQ(module.last, "stats");
        EXPECT_TRUE(module.kept == stats);
        EXPECT_TRUE(dispatcher.dispatch(8, bytes, module, 0));
        EXPECT_EQ(module.last, "stats 8");
        EXPECT_TRUE(dispatcher.dispatch(1, bytes, module, 0));
        EXPECT_EQ(module.last, "unknown");
        EXPECT_FALSE(dispatcher.dispatch(UINT64_MAX, bytes, module, 0));
        EXPECT_EQ(module.last, "refused");
        EXPECT_FALSE(dispatcher.dispatch(3, std::span(bytes).subspan(48), module, 0));
        EXPECT_EQ(module.last, "ifid");
        EXPECT_EQ(tlvmsg::session_key(bytes).value_or(9), 0U);
        EXPECT_EQ(tlvmsg::session_key(std::span(bytes).subspan(1)), std::nullopt);
        EXPECT_EQ(news, before) << "nothing is allocated but blocks";
    }
    EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0U);
}

#define LIST(DO)                                                                                             \
    DO(cellular)                                                                                             \
    DO(common) DO(ethernet) DO(macsec) DO(module) DO(netsync) DO(qos) DO(server) DO(switch) DO(tdm)          \
        DO(voice) DO(xdsl)
#define COUNT(X) +1

TEST(Lists, HaveEachTypeThatHasARecordOfItsOwn) {
    int listed = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        bool is = false;
        const auto compare = [&](auto known) {
            is = &tlvmsg::traits<typename decltype(known)::type>::type() == &type;
        };
        bool in_messages = false;
        bool in_types = false;
#define VISIT(FAMILY)                                                                                        \
    in_messages = in_messages || tlvmsg::visit_type<tlvmsg::messages_of_##FAMILY>(type, compare);            \
    in_types = in_types || tlvmsg::visit_type<tlvmsg::types_of_##FAMILY>(type, compare);
        LIST(VISIT)
        EXPECT_EQ(is, in_types) << type.name;
        EXPECT_EQ(in_messages, type.kind == TLVMSG_MESSAGE) << type.name;
        EXPECT_FALSE(in_types && type.kind <= TLVMSG_ENUMERATION) << type.name;
        listed += in_types ? 1 : 0;
    }
#define COUNT_TYPES(FAMILY) TLVMSG_TYPES_OF_##FAMILY(COUNT)
    EXPECT_EQ(listed, 0 LIST(COUNT_TYPES));
    tlvmsg_type copy = *tlvmsg_descriptor_ifid();
    EXPECT_FALSE(tlvmsg::visit_type<tlvmsg::types_of_common>(copy, [](auto) { FAIL(); }));
}

} // namespace

} // namespace tlvmsg_test
