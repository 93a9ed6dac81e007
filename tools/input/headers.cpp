#include "headers.h"

#include <fmt/ranges.h>
#include <pcap/pcap.h>

#include <arpa/inet.h>
#include <array>

namespace tlvmsg::tool {

namespace {

// These have one number in files and, on some systems, another in the library.
constexpr int link_raw_ip = 101;
constexpr int link_exported_pdu = 252;

constexpr Next ethernet_frame{Layer::link, DLT_EN10MB};

// Steps over a header; null where there is no step for it.
using Skip = Next (*)(FrameFacts &facts, View &data);
Skip skip_of(Next next);

std::string hardware_address(Bytes bytes) { return fmt::format("{:02x}", fmt::join(bytes, ":")); }

Next at_ip(FrameFacts &, View &) { return {Layer::ip}; }

// Of Ethernet, where what is less than any type is a length, and logical link control follows.
Next type_or_length(uint16_t number, View &frame) {
    if (number >= least_ethertype) {
        return {Layer::ethertype, number};
    }
    if (number <= frame.size) {
        frame.end_at(number);
    }
    return {Layer::link, link_llc};
}

Next skip_ethernet(FrameFacts &facts, View &frame) {
    const Bytes header = frame.take(14, "Ethernet");
    facts.destination = hardware_address(header.first(6));
    facts.source = hardware_address(header.subspan(6, 6));
    facts.ports = {};
    return type_or_length(number_at(header, 12), frame);
}

Next skip_vlan(FrameFacts &, View &frame) {
    return type_or_length(number_at(frame.take(4, "VLAN"), 2), frame);
}

Next skip_llc(FrameFacts &, View &frame) {
    const Bytes header = frame.take(3, "LLC");
    const bool numbered = header[2] % 4 != 3; // such have a control field of two bytes
    frame.take(numbered ? 1 : 0, "LLC");
    if (header[0] != 0xAA || header[1] != 0xAA || header[2] != 3) {
        return {Layer::llc, header[0]};
    }
    const Bytes snap = frame.take(5, "SNAP");
    const uint32_t organization = number32(snap, 0) >> 8;
    const uint16_t type = number_at(snap, 3);
    const bool is_ethertype = organization == 0 || organization == 0xF8;
    return is_ethertype ? Next{Layer::ethertype, type}
                        : Next{Layer::snap, uint64_t{organization} << 16 | type};
}

// A header of either version; both say only who sent the frame.
Next skip_cooked(size_t size, size_t type_at, size_t address_at, FrameFacts &facts, View &frame) {
    const Bytes header = frame.take(size, "Linux cooked");
    facts.source = hardware_address(header.subspan(address_at, std::min<size_t>(header[address_at - 1], 8)));
    constexpr uint16_t llc = 4;
    const uint16_t type = number_at(header, type_at);
    return type == llc ? Next{Layer::link, link_llc} : Next{Layer::ethertype, type};
}

Next skip_cooked_1(FrameFacts &facts, View &frame) { return skip_cooked(16, 14, 6, facts, frame); }

Next skip_cooked_2(FrameFacts &facts, View &frame) { return skip_cooked(20, 0, 12, facts, frame); }

// The address family as the capturing system numbers it, in that system's byte order or big-endian.
Next skip_loopback(FrameFacts &facts, View &frame) {
    const Bytes header = frame.take(4, "loopback");
    const uint32_t family = header[0] == 0 ? number32(header, 0) : uint32_t{header[1]} << 8 | header[0];
    facts.protocol = fmt::format("family {}", family);
    constexpr std::array<uint32_t, 6> ip{2, 10, 23, 24, 28, 30};
    const bool is_ip = std::find(ip.begin(), ip.end(), family) != ip.end();
    return {is_ip ? Layer::ip : Layer::payload};
}

// Tags with a length each, up to tag 0.
Next skip_exported_pdu(FrameFacts &, View &frame) {
    for (Bytes tag; tag.empty() || number_at(tag, 0) != 0;) {
        tag = frame.take(4, "exported PDU");
        frame.skip(number_at(tag, 2));
    }
    return {Layer::payload};
}

// The address and control field may have been left out, and the first byte of the protocol where that is zero.
Next skip_ppp(FrameFacts &, View &frame) {
    if (frame.bytes.size() >= 2 && number_at(frame.bytes, 0) == 0xFF03) {
        frame.skip(2);
    }
    const uint8_t first = frame.take(1, "PPP")[0];
    const auto protocol =
        static_cast<uint16_t>(first % 2 != 0 ? first : first << 8 | frame.take(1, "PPP")[0]);
    return {Layer::ppp, protocol};
}

Next skip_pppoe(FrameFacts &facts, View &frame) {
    frame.end_at(std::min<size_t>(number_at(frame.take(6, "PPPoE"), 4), frame.size));
    return skip_ppp(facts, frame);
}

// No label says what is behind the last one: IP by its version; or Ethernet, perhaps behind a control word, where its
// type is known.
Next skip_mpls(FrameFacts &facts, View &frame) {
    while (frame.take(4, "MPLS")[2] % 2 == 0) {
    }
    facts.protocol = "mpls";
    const unsigned version = frame.bytes.empty() ? 0 : frame.bytes[0] / 16;
    if (version == 4 || version == 6) {
        return {Layer::ip};
    }
    for (const size_t word : {version == 0 ? size_t{4} : size_t{0}, size_t{0}}) {
        if (frame.bytes.size() >= word + 14 &&
            skip_of({Layer::ethertype, number_at(frame.bytes, word + 12)}) != nullptr) {
            frame.skip(word);
            return ethernet_frame;
        }
    }
    return {Layer::payload};
}

// Either version: flags say which words of four bytes there are.
Next skip_gre(FrameFacts &, View &packet) {
    const Bytes header = packet.take(4, "GRE");
    const uint16_t flags = number_at(header, 0);
    for (const int optional : {0xC000, 0x2000, 0x1000, 0x0080}) {
        packet.take((flags & optional) != 0 ? 4 : 0, "GRE");
    }
    return {Layer::ethertype, number_at(header, 2)};
}

Next skip_udp(FrameFacts &facts, View &datagram) {
    const Bytes header = datagram.take(8, "UDP");
    facts.ports = Ports{number_at(header, 0), number_at(header, 2)};
    if (const size_t length = number_at(header, 4); length >= header.size()) {
        datagram.end_at(length - header.size());
    }
    constexpr uint16_t vxlan_port = 4789;
    constexpr uint32_t vxlan_flags = 0x08000000;
    if (facts.ports->destination == vxlan_port && datagram.bytes.size() >= 8 &&
        number32(datagram.bytes, 0) == vxlan_flags) {
        datagram.skip(8);
        return ethernet_frame;
    }
    return {Layer::payload};
}

// What numbers of a layer stand for. A header that is not here is where the payload begins.
struct Row {
    Layer layer;
    std::initializer_list<uint64_t> numbers;
    Skip skip;
};

constexpr Row rows[] = {
    {Layer::link, {DLT_EN10MB}, skip_ethernet},
    {Layer::link, {DLT_LINUX_SLL}, skip_cooked_1},
    {Layer::link, {DLT_LINUX_SLL2}, skip_cooked_2},
    {Layer::link, {DLT_NULL, DLT_LOOP}, skip_loopback},
    {Layer::link, {DLT_RAW, DLT_IPV4, DLT_IPV6, link_raw_ip}, at_ip},
    {Layer::link, {DLT_PPP, DLT_PPP_SERIAL}, skip_ppp},
    {Layer::link, {DLT_PPP_ETHER}, skip_pppoe},
    {Layer::link, {DLT_MPLS}, skip_mpls},
    {Layer::link, {link_exported_pdu}, skip_exported_pdu},
    {Layer::link, {link_llc}, skip_llc},

    {Layer::ethertype, {0x0800, 0x86DD}, at_ip},
    {Layer::ethertype, {0x8100, 0x88A8, 0x9100}, skip_vlan},
    {Layer::ethertype, {0x8847, 0x8848}, skip_mpls},
    {Layer::ethertype, {0x8864}, skip_pppoe},
    {Layer::ethertype, {0x880B}, skip_ppp},
    {Layer::ethertype, {0x6558}, skip_ethernet},

    {Layer::llc, {0x06}, at_ip},
    {Layer::ppp, {0x0021, 0x0057}, at_ip},
    {Layer::ppp, {0x0281, 0x0283}, skip_mpls},

    {Layer::ip_protocol, {4, 41}, at_ip},
    {Layer::ip_protocol, {17}, skip_udp},
    {Layer::ip_protocol, {47}, skip_gre},
    {Layer::ip_protocol, {137}, skip_mpls},
};

Skip skip_of(Next next) {
    for (const Row &row : rows) {
        if (row.layer == next.layer &&
            std::find(row.numbers.begin(), row.numbers.end(), next.number) != row.numbers.end()) {
            return row.skip;
        }
    }
    return nullptr;
}

// Those of users have no headers.
bool is_users_own(Next next) { return next.number >= DLT_USER0 && next.number <= DLT_USER15; }

// ---- IP and TCP ----

constexpr uint8_t fragment_header = 44;
constexpr uint8_t authentication_header = 51;

std::string address(int family, Bytes bytes) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(family, bytes.data(), text.data(), text.size());
}

std::optional<IpHeader> skip_ipv4(FrameFacts &facts, View &packet) {
    View rest = packet;
    const Bytes header = rest.take(20, "IPv4");
    const size_t size = size_t{header[0]} % 16 * 4;
    const size_t length = number_at(header, 2);
    if (size < header.size() || (length != 0 && length < size)) {
        return std::nullopt;
    }
    if (length != 0) { // 0 is what segmentation offload leaves there
        packet.end_at(length);
    }
    packet.take(size, "IPv4");
    facts.source = address(AF_INET, header.subspan(12));
    facts.destination = address(AF_INET, header.subspan(16));
    const uint8_t protocol = header[9];
    return IpHeader{protocol, uint64_t{protocol} << 16 | number_at(header, 4),
                    number_at(header, 6) % 0x2000 * size_t{8}, (header[6] & 0x20) != 0};
}

IpHeader skip_ipv6(FrameFacts &facts, View &packet) {
    const Bytes header = packet.take(40, "IPv6");
    if (const size_t length = number_at(header, 4); length != 0) {
        packet.end_at(length);
    }
    facts.source = address(AF_INET6, header.subspan(8));
    facts.destination = address(AF_INET6, header.subspan(24));
    uint8_t protocol = header[6];
    skip_extensions(protocol, packet);
    if (protocol != fragment_header) {
        return {protocol};
    }
    const Bytes extension = packet.take(8, "IPv6 fragment");
    return {extension[0], number32(extension, 4), number_at(extension, 2) / 8 * size_t{8},
            extension[3] % 2 != 0};
}

} // namespace

std::string link_name(int link_type) {
    const char *const name = pcap_datalink_val_to_name(link_type);
    return name == nullptr ? fmt::format("{}", link_type) : fmt::format("{} ({})", link_type, name);
}

std::string protocol_name(Next next, const std::string &before) {
    switch (next.layer) {
    case Layer::payload:
    case Layer::link:
        return before;
    case Layer::ethertype:
        return fmt::format("ethertype 0x{:04X}", next.number);
    case Layer::llc:
        return fmt::format("llc 0x{:02X}", next.number);
    case Layer::snap:
        return fmt::format("snap {:06X} 0x{:04X}", next.number >> 16, next.number & 0xFFFF);
    case Layer::ppp:
        return fmt::format("ppp 0x{:04X}", next.number);
    case Layer::ip:
        return before.empty() ? "ip" : before;
    case Layer::ip_protocol:
        return next == tcp ? "tcp" : next == udp ? "udp" : fmt::format("ip {}", next.number);
    }
    return before;
}

Next skip_layers(Next next, FrameFacts &facts, View &data) {
    for (;;) {
        facts.protocol = protocol_name(next, facts.protocol);
        if (const Skip skip = skip_of(next)) {
            next = skip(facts, data);
        } else if (next.layer == Layer::link && !is_users_own(next)) {
            throw Problem{
                ToolCode::link_type,
                fmt::format("the headers of link type {} are not known; give the offset where messages begin",
                            link_name(static_cast<int>(next.number)))};
        } else {
            return next;
        }
    }
}

std::optional<IpHeader> skip_ip(FrameFacts &facts, View &packet) {
    const unsigned version = packet.bytes.empty() ? 4 : packet.bytes[0] / 16;
    if (version == 6) {
        return skip_ipv6(facts, packet);
    }
    return version == 4 ? skip_ipv4(facts, packet) : std::nullopt;
}

void skip_extensions(uint8_t &protocol, View &data) {
    // Hop-by-hop options, routing, destination options.
    while (protocol == 0 || protocol == 43 || protocol == 60 || protocol == authentication_header) {
        const Bytes header = data.take(8, "IP extension");
        const size_t size =
            protocol == authentication_header ? (size_t{header[1]} + 2) * 4 : (size_t{header[1]} + 1) * 8;
        data.take(size - header.size(), "IP extension");
        protocol = header[0];
    }
}

TcpHeader skip_tcp(FrameFacts &facts, View &segment) {
    const Bytes header = segment.take(20, "TCP");
    facts.ports = Ports{number_at(header, 0), number_at(header, 2)};
    const size_t size = size_t{header[12]} / 16 * 4;
    segment.take(std::max(size, header.size()) - header.size(), "TCP");
    return {number32(header, 4), header[13]};
}

} // namespace tlvmsg::tool
