// Puts IP fragments together, however they come: in any order, more than once, overlapping.
#pragma once

#include "headers.h"

#include <deque>
#include <list>

namespace tlvmsg::tool {

struct IpDatagram {
    uint8_t protocol;
    std::vector<uint8_t> bytes;
};

class IpFragments {
public:
    static constexpr size_t most_datagrams = 64; // at a time; the oldest is given up for a new one
    static constexpr size_t most_bytes = 65535;  // of a datagram

    // The datagram that a fragment, with `data` behind `header`, completes, if it does.
    // What is wrong, and what is given up, goes to `reports`.
    std::optional<IpDatagram> add(const FrameFacts &facts, const IpHeader &header, Bytes data,
                                  std::deque<Payload> &reports);

    // Gives up all.
    void finish(std::deque<Payload> &reports);

private:
    struct Datagram {
        std::string key;
        FrameFacts facts{}; // of the first frame
        uint8_t protocol = 0;
        std::vector<uint8_t> bytes{};
        std::vector<bool> present{}; // which bytes have come
        size_t count = 0;            // of those
        bool ended = false;          // the last fragment has come, so that the size is known
        bool repeats = false;        // was complete; all that came since was the same once more

        void fill(const IpFragment &fragment, Bytes data);
        void resize(size_t size);
    };

    Datagram &find(std::string key, std::deque<Payload> &reports);
    void give_up(std::list<Datagram>::iterator datagram, std::deque<Payload> &reports);

    std::list<Datagram> datagrams_; // oldest first
};

} // namespace tlvmsg::tool
