// Samples: the same for the same seed, as large or as small as they promise, and various.
#include "tools/sample.h"

#include <tlvmsg/inspect.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tlvmsg::tool {

namespace {

std::string json_of(const char *name, SampleKind kind, uint64_t seed) {
    const tlvmsg_type *type = tlvmsg_type_find(name);
    return to_json(type, make_sample(type, kind, seed).data(), 0);
}

size_t size_of(const char *name, SampleKind kind) {
    const tlvmsg_type *type = tlvmsg_type_find(name);
    size_t size = 0;
    EXPECT_TRUE(tlvmsg_size(type, make_sample(type, kind, 1).data(), &size, nullptr));
    return size;
}

TEST(Sample, depends_on_the_seed_alone) {
    EXPECT_EQ(json_of("ether_config_message", SampleKind::random, 5),
              json_of("ether_config_message", SampleKind::random, 5));
    EXPECT_NE(json_of("ether_config_message", SampleKind::random, 5),
              json_of("ether_config_message", SampleKind::random, 6));
}

TEST(Sample, reaches_the_least_and_the_largest_encoding) {
    for (const char *name : {"zel_serial_mdl_str", "netsync_update_all_ports_ql", "ether_cfg"}) {
        const tlvmsg_type *type = tlvmsg_type_find(name);
        EXPECT_EQ(size_of(name, SampleKind::min), type->min_encoded) << name;
        EXPECT_EQ(size_of(name, SampleKind::max), type->max_encoded) << name;
    }
    // 255 counters, the most that the count can say, fit below the longest value.
    EXPECT_EQ(size_of("zel_vlan_stat_bundle", SampleKind::max),
              tlvmsg_type_find("zel_vlan_stat_bundle")->max_encoded);
}

TEST(Sample, takes_every_alternative_in_turn_and_none) {
    const tlvmsg_type *type = tlvmsg_type_find("dsx1_batch_cfg");
    std::set<size_t> sizes;
    std::set<uint32_t> selectors;
    for (uint64_t seed = 1; seed <= 200; ++seed) {
        const Record sample = make_sample(type, SampleKind::random, seed);
        size_t size = 0;
        ASSERT_TRUE(tlvmsg_size(type, sample.data(), &size, nullptr));
        sizes.insert(size);
        selectors.insert(*static_cast<const uint32_t *>(sample.data()));
    }
    EXPECT_EQ(selectors.size(), 10u);
    EXPECT_EQ(sizes, (std::set<size_t>{16, 25, 32, 44, 80, 88}));
}

} // namespace

} // namespace tlvmsg::tool
