// Puts IP fragments together, however they come: in any order, more than once, overlapping.
#pragma once

#include "headers.h"

#include <map>

namespace tlvmsg::tool {

class IpFragments {
public:
    static constexpr size_t most_datagrams = 64; // at a time; the oldest is given up for a new one

    // The data of the datagram that a fragment, with `data` behind `header`, completes, if it does; `header` then
    // has the datagram's protocol. What is given up is told.
    std::optional<std::vector<uint8_t>> add(const FrameFacts &facts, IpHeader &header, Bytes data,
                                            Payloads &out);

    // Gives up the oldest; false when there is none.
    bool give_up(Payloads &out);

private:
    struct Datagram {
        FrameFacts facts; // of the first frame
        uint8_t protocol = 0;
        std::vector<std::optional<uint8_t>> bytes{}; // those that have come
        std::optional<size_t> size{};                // when the last fragment has come

        void fill(const IpHeader &header, Bytes data);
        size_t missing() const; // up to the end known
    };

    std::map<std::string, Datagram> datagrams_;
};

} // namespace tlvmsg::tool
