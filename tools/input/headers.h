// The headers of frames. Each function steps over some, and notes in the facts what they say. What ends inside one
// is a Problem, which they throw.
#pragma once

#include "payload.h"

#include "base/element.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

namespace tlvmsg::tool {

using base::Bytes;
using base::number_at;

// Bytes of a frame, not all of which need have been captured.
struct View {
    Bytes bytes; // those that are there
    size_t size; // those that there should be, never fewer

    size_t missing() const { return size - bytes.size(); }

    void skip(size_t count) {
        bytes = bytes.subspan(std::min(count, bytes.size()));
        size -= std::min(count, size);
    }

    // Steps over a header.
    Bytes take(size_t count, const char *header) {
        if (bytes.size() < count) {
            throw Problem{ToolCode::cut, fmt::format("it ends inside the {} header", header)};
        }
        const Bytes taken = bytes.first(count);
        skip(count);
        return taken;
    }

    // What a header says of the length: behind it is padding, and what is not there is missing.
    void end_at(size_t length) {
        bytes = bytes.first(std::min(length, bytes.size()));
        size = length;
    }
};

inline uint32_t number32(Bytes bytes, size_t offset) {
    return uint32_t{number_at(bytes, offset)} << 16 | number_at(bytes, offset + 2);
}

// "147 (USER0)"; link types are numbered as in libpcap.
std::string link_name(int link_type);

// What a header says is behind it: a layer, and its number among those of the layer.
enum class Layer { payload, link, ethertype, llc, snap, ppp, ip, ip_protocol };

struct Next {
    Layer layer;
    uint64_t number = 0;

    bool operator==(const Next &) const = default;
};

constexpr Next tcp{Layer::ip_protocol, 6};
constexpr Next udp{Layer::ip_protocol, 17};
constexpr uint64_t link_llc = 1 << 16; // beyond those of files: what Ethernet has behind a length
constexpr uint16_t least_ethertype = 0x600;

// "udp", "ip 89", "ethertype 0x88B5"; `before` where the layer has no name of its own.
std::string protocol_name(Next next, const std::string &before);

// Steps over all headers from that one to the next IP header or to what there is no step for. Throws Problem for a link
// type whose headers are not known.
Next skip_layers(Next next, FrameFacts &facts, View &data);

struct IpHeader {
    uint8_t protocol;  // of what is behind it; of a fragment: of the datagram's data
    uint64_t id = 0;   // of a fragment: of the datagram, among those with the same addresses
    size_t offset = 0; // in the datagram's data
    bool more = false; // behind this one

    bool is_fragment() const { return offset != 0 || more; }
};

// Null for what cannot be IP, which is not stepped over.
std::optional<IpHeader> skip_ip(FrameFacts &facts, View &packet);

// IP extension headers, each of which names the next protocol.
void skip_extensions(uint8_t &protocol, View &data);

struct TcpHeader {
    uint32_t sequence;
    uint8_t flags;
};

TcpHeader skip_tcp(FrameFacts &facts, View &segment);

} // namespace tlvmsg::tool
