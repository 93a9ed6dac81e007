// Which types these bytes may be.
#pragma once

#include <tlvmsg/inspect.h>

#include <vector>

namespace tlvmsg::tool {

struct Guess {
    const tlvmsg_type *type;
    bool accepted;
    size_t consumed;    // when accepted; less than the whole input when there is more behind it
    size_t deviations;  // when accepted
    tlvmsg_fault fault; // when rejected: how far it got, and why not further
};

// The accepted types, best first: the whole input consumed, few deviations, messages before what they are
// made of. Then those that come nearest, by how far they got; types whose first tag is already another are
// none. Types that accept the input without taking anything of it tell nothing and are left out.
std::vector<Guess> guess(const uint8_t *in, size_t in_len, size_t at_most_rejected);

} // namespace tlvmsg::tool
