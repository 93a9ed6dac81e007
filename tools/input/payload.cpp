#include "payload.h"

#include <pcap/dlt.h>

#include <algorithm>

namespace tlvmsg::tool {

namespace {

using Bytes = std::span<const uint8_t>;

// These two link types have one number in files and, on some systems, another in the library.
constexpr int link_raw_ip = 101;
constexpr int link_exported_pdu = 252;

constexpr uint16_t ethertype_ipv4 = 0x0800;
constexpr uint16_t ethertype_ipv6 = 0x86DD;
constexpr uint16_t ethertype_vlan = 0x8100;
constexpr uint16_t ethertype_service_vlan = 0x88A8;
constexpr uint8_t protocol_tcp = 6;
constexpr uint8_t protocol_udp = 17;

Bytes behind(Bytes bytes, size_t size) { return bytes.subspan(std::min(size, bytes.size())); }

// 0 when it is not there.
uint16_t number_at(Bytes bytes, size_t offset) {
    return bytes.size() < offset + 2 ? uint16_t{0}
                                     : static_cast<uint16_t>(bytes[offset] << 8 | bytes[offset + 1]);
}

Bytes transport(uint8_t protocol, Bytes bytes) {
    switch (protocol) {
    case protocol_udp:
        return behind(bytes, 8);
    case protocol_tcp:
        return bytes.size() < 20 ? Bytes() : behind(bytes, size_t{bytes[12]} / 16 * 4);
    default:
        return bytes;
    }
}

Bytes ipv4(Bytes bytes) {
    if (bytes.size() < 20) {
        return {};
    }
    // Behind the packet may be padding. A length of 0 is what segmentation offload leaves there.
    const size_t length = number_at(bytes, 2);
    const Bytes packet = length == 0 ? bytes : bytes.first(std::min(length, bytes.size()));
    return packet.size() < 20 ? Bytes() : transport(packet[9], behind(packet, size_t{packet[0]} % 16 * 4));
}

Bytes ipv6(Bytes bytes) {
    constexpr size_t header = 40;
    if (bytes.size() < header) {
        return {};
    }
    const Bytes packet = bytes.first(std::min(header + number_at(bytes, 4), bytes.size()));
    return transport(packet[6], behind(packet, header));
}

Bytes ip(Bytes bytes) { return !bytes.empty() && bytes[0] >> 4 == 6 ? ipv6(bytes) : ipv4(bytes); }

Bytes ethernet(Bytes frame, size_t type_at) {
    while (number_at(frame, type_at) == ethertype_vlan ||
           number_at(frame, type_at) == ethertype_service_vlan) {
        type_at += 4;
    }
    const uint16_t type = number_at(frame, type_at);
    const Bytes inside = behind(frame, type_at + 2);
    return type == ethertype_ipv4 || type == ethertype_ipv6 ? ip(inside) : inside;
}

// Tags with a length each, up to tag 0.
Bytes exported_pdu(Bytes frame) {
    while (number_at(frame, 0) != 0) {
        frame = behind(frame, size_t{4} + number_at(frame, 2));
    }
    return behind(frame, 4);
}

} // namespace

Bytes payload_of(int link_type, Bytes frame) {
    switch (link_type) {
    case DLT_EN10MB:
        return ethernet(frame, 12);
    case DLT_LINUX_SLL:
        return ethernet(frame, 14);
    case DLT_RAW:
    case link_raw_ip:
        return ip(frame);
    case link_exported_pdu:
        return exported_pdu(frame);
    default:
        return frame;
    }
}

} // namespace tlvmsg::tool
