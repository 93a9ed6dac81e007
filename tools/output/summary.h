// What has been seen in all inputs, at the end.
#pragma once

#include "tools/reading/reading.h"

#include <map>
#include <string>

namespace tlvmsg::tool {

class Summary {
public:
    // What became of a message; `verdict` is of no interest where it has a problem.
    void add(const Message &message, const tlvmsg_verdict &verdict);

    // {"summary":{"messages":5,"types":{"zel_led_control":5},"deviating":1,"faults":{"cut":1},"without":13,"gaps":2}}:
    // gaps are of TCP streams, and without a message is what nothing says should have one. What tags alone name is counted
    // as a message, but has no type.
    std::string json() const;
    std::string text() const; // the same in lines, each a comment for tlv

private:
    using Counts = std::map<std::string, size_t>;

    Counts types_;
    Counts faults_;
    size_t messages_ = 0;
    size_t deviating_ = 0;
    size_t without_ = 0;
    size_t gaps_ = 0;
};

} // namespace tlvmsg::tool
