// What a capture yields: bytes that may hold messages, and what is known of the frame that they came with.
#pragma once

#include "tools/faults/problem.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tlvmsg::tool {

struct Ports {
    uint16_t source;
    uint16_t destination;
};

constexpr Ports made_up_ports{9000, 9000}; // for frames that are written without known ones

struct FrameFacts {
    uint64_t number = 0; // from 1, in the file
    int64_t seconds = 0; // since 1970
    uint32_t nanoseconds = 0;
    size_t captured = 0;  // bytes of the frame in the file
    size_t length = 0;    // and in all
    std::string source{}; // IP addresses, or else those of the link; empty where there are none
    std::string destination{};
    std::optional<Ports> ports{};
    std::string protocol{}; // the innermost known: "udp", "ip 89", "ethertype 0x88B5"; empty when none is
    bool timed = true;      // dumps of frames have no times
};

struct Payload {
    FrameFacts facts;
    std::vector<uint8_t> bytes; // with a problem: those that are there
    std::optional<Problem> problem;
};

using Payloads = std::deque<Payload>; // in the order in which they are told

} // namespace tlvmsg::tool
