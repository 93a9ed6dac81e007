// What differs between two records.
#pragma once

#include <tlvmsg/types.h>

#include <string>
#include <vector>

namespace tlvmsg::tool {

struct Difference {
    std::string path; // as in JSON: "$.led_control.color", "$.vlan_counters[3]"
    std::string a, b; // as JSON in one line; empty where that record has nothing
};

// In the order of the wire; none when both records say the same. An item or alternative that only one of
// them has is one difference.
std::vector<Difference> diff(const tlvmsg_type *type, const void *a, const void *b);

} // namespace tlvmsg::tool
