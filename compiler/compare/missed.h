// Says how new decoders read an old peer's structure that ends before a member which has been appended since.
#pragma once

#include "compiler/compare/holders.h"

#include <string>

namespace tlvc {

// Looks at the types of the old peer's schema.
class MissedMembers {
public:
    explicit MissedMembers(const Holders &holders) : holders_(holders) {}

    // Why a first member of that type is not simply absent behind a structure that ends before it: an element that
    // would be taken for it, or nothing at all, may follow. Empty if it is.
    std::string why_missed(const Type &member, const Type &structure);

private:
    const std::string &behind(const Type &type, uint16_t tag);
    std::string behind(const Holder &place, uint16_t tag);

    const Holders &holders_;
    std::map<std::pair<const Type *, uint16_t>, std::string> known_;
};

// Says what a decoder puts into the record for an absent member of that type, as if it had been sent. Empty if it
// clears the member.
std::string what_fills(const Type &member);

} // namespace tlvc
