#include "headers.h"

#include <arpa/inet.h>
#include <array>

namespace tlvmsg::tool {

namespace {

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
    const size_t length = number16(header, 2);
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
    return IpHeader{protocol, uint64_t{protocol} << 16 | number16(header, 4),
                    number16(header, 6) % 0x2000 * size_t{8}, (header[6] & 0x20) != 0};
}

IpHeader skip_ipv6(FrameFacts &facts, View &packet) {
    const Bytes header = packet.take(40, "IPv6");
    if (const size_t length = number16(header, 4); length != 0) {
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
    return {extension[0], number32(extension, 4), number16(extension, 2) / 8 * size_t{8},
            extension[3] % 2 != 0};
}

} // namespace

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
    facts.ports = Ports{number16(header, 0), number16(header, 2)};
    const size_t size = size_t{header[12]} / 16 * 4;
    segment.take(std::max(size, header.size()) - header.size(), "TCP");
    return {number32(header, 4), header[13]};
}

} // namespace tlvmsg::tool
