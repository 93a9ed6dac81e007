#include "capture_writer.h"

#include "base/number.h"
#include "cli/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <netinet/ether.h>

namespace tlvmsg::tool {

using namespace cli;

namespace {

using Octets = std::string;

Octets big(uint64_t value, size_t width) {
    Octets bytes;
    for (size_t shift = 8 * width; shift > 0; shift -= 8) {
        bytes += static_cast<char>(value >> (shift - 8));
    }
    return bytes;
}

Octets little(uint64_t value, size_t width) {
    const Octets bytes = big(value, width);
    return {bytes.rbegin(), bytes.rend()};
}

// What is before a message of that size. Null when no such header can say the size.
std::optional<Octets> header_of(const tlvmsg_framing &framing, size_t size) {
    Octets header(framing.header, '\0');
    auto *const first = reinterpret_cast<uint8_t *>(header.data());
    return tlvmsg_frame_header(&framing, size, first, nullptr) ? std::optional(header) : std::nullopt;
}

// The sum of IP, UDP and TCP.
uint16_t checksum(const Octets &bytes) {
    uint64_t sum = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        sum += uint64_t{static_cast<uint8_t>(bytes[i])} << (i % 2 == 0 ? 8 : 0);
    }
    while (sum > 0xFFFF) {
        sum = (sum & 0xFFFF) + (sum >> 16);
    }
    return static_cast<uint16_t>(~sum);
}

// Of either version; empty for what is none.
Octets ip_address(const std::string &text) {
    Octets bytes(16, '\0');
    for (const auto &[family, size] : {std::pair(AF_INET, 4), std::pair(AF_INET6, 16)}) {
        if (inet_pton(family, text.c_str(), bytes.data()) == 1) {
            return bytes.substr(0, static_cast<size_t>(size));
        }
    }
    return "";
}

// "02:00:00:00:00:01"; zero where there is none.
Octets hardware_address(const std::string &text) {
    ether_addr address{};
    ether_aton_r(text.c_str(), &address);
    return {std::begin(address.ether_addr_octet), std::end(address.ether_addr_octet)};
}

struct Ends {
    Octets source;
    Octets destination;

    bool is_v4() const { return source.size() == 4; }
    Octets pseudo_header(size_t size, uint64_t protocol) const {
        return source + destination + big(size, 4) + big(protocol, 4);
    }
};

// With its checksum, which stands `at` that byte.
Octets summed(Octets transport, const Ends &ends, uint64_t protocol, size_t at) {
    const uint16_t sum = checksum(ends.pseudo_header(transport.size(), protocol) + transport);
    return transport.replace(at, 2, big(protocol == udp.number && sum == 0 ? 0xFFFF : sum, 2));
}

Octets ip_packet(const Ends &ends, uint64_t protocol, const Octets &data) {
    if (!ends.is_v4()) {
        return big(0x60000000, 4) + big(data.size(), 2) + big(protocol, 1) + big(64, 1) + ends.source +
               ends.destination + data;
    }
    Octets header = big(0x4500, 2) + big(20 + data.size(), 2) + big(0x00004000, 4) + big(64, 1) +
                    big(protocol, 1) + big(0, 2) + ends.source + ends.destination;
    header.replace(10, 2, big(checksum(header), 2));
    return header + data;
}

Octets udp_datagram(const Ends &ends, Ports ports, const Octets &data) {
    return summed(big(ports.source, 2) + big(ports.destination, 2) + big(8 + data.size(), 2) + big(0, 2) +
                      data,
                  ends, udp.number, 6);
}

Octets tcp_segment(const Ends &ends, Ports ports, uint32_t sequence, uint32_t acknowledged,
                   const Octets &data) {
    constexpr uint64_t push_acknowledge = 0x5018;
    return summed(big(ports.source, 2) + big(ports.destination, 2) + big(sequence, 4) + big(acknowledged, 4) +
                      big(push_acknowledge, 2) + big(0xFFFF, 2) + big(0, 4) + data,
                  ends, tcp.number, 16);
}

constexpr uint32_t snap_length = 1 << 18;
constexpr uint32_t link_ethernet = 1;

Octets block(uint32_t type, const Octets &body) {
    const Octets size = little(12 + body.size(), 4);
    return little(type, 4) + size + body + size;
}

// A section, and an interface whose times are in nanoseconds.
Octets pcapng_header() {
    const Octets resolution = little(9, 2) + little(1, 2) + little(9, 4) + little(0, 4);
    return block(0x0A0D0D0A, little(0x1A2B3C4D, 4) + little(1, 2) + little(0, 2) + little(UINT64_MAX, 8)) +
           block(1, little(link_ethernet, 4) + little(snap_length, 4) + resolution);
}

// The number behind a protocol's name: of "ip 89" for "ip".
std::optional<uint64_t> number_behind(const std::string &protocol, const std::string &name, uint64_t most) {
    return protocol.starts_with(name + " ")
               ? base::typed_number(std::string_view(protocol).substr(name.size() + 1), most)
               : std::nullopt;
}

} // namespace

CaptureWriter::CaptureWriter(const std::string &path, const tlvmsg_framing &framing)
    : path_(path), framing_(framing),
      file_(path == "-" ? stdout : std::fopen(path.c_str(), "wb"), std::fclose) {
    if (file_ == nullptr) {
        throw Failure(exit_io, fmt::format("{}: {}", path, std::strerror(errno)));
    }
    write(pcapng_header());
}

const char *CaptureWriter::add(const FrameFacts &facts, Bytes message) {
    const std::optional<Octets> header = header_of(framing_, message.size());
    if (!header) {
        return "too long for the framing's length";
    }
    const uint64_t time = static_cast<uint64_t>(facts.seconds) * 1'000'000'000 + facts.nanoseconds;
    time_ = time != 0 ? time : time_ + 1'000'000;
    const Octets payload = *header + Octets(message.begin(), message.end());
    const auto ethertype = number_behind(facts.protocol, "ethertype", UINT16_MAX);
    if (!ethertype) {
        return add_ip(facts, payload);
    }
    write_frame(hardware_address(facts.destination) + hardware_address(facts.source) + big(*ethertype, 2) +
                payload);
    return nullptr;
}

const char *CaptureWriter::add_ip(const FrameFacts &facts, const std::string &payload) {
    const Ends ends{ip_address(facts.source.empty() ? "192.0.2.1" : facts.source),
                    ip_address(facts.destination.empty() ? "192.0.2.2" : facts.destination)};
    if (ends.source.empty() || ends.source.size() != ends.destination.size()) {
        return "without two IP addresses of one version";
    }
    const size_t most = 65535 - (ends.is_v4() ? 20 : 0) - 20;
    const bool in_pieces = facts.protocol == "tcp" && framing_.width != 0;
    if (payload.size() > most && !in_pieces) {
        return "too long for an IP packet";
    }
    const auto write = [&](uint64_t protocol, const Octets &data) {
        write_frame(big(0x020000000002, 6) + big(0x020000000001, 6) + big(ends.is_v4() ? 0x0800 : 0x86DD, 2) +
                    ip_packet(ends, protocol, data));
    };
    const Ports ports = facts.ports.value_or(made_up_ports);
    if (const auto protocol = number_behind(facts.protocol, "ip", UINT8_MAX)) {
        write(*protocol, payload);
    } else if (facts.protocol == "tcp") {
        const Octets source = ends.source + big(ports.source, 2),
                     destination = ends.destination + big(ports.destination, 2);
        uint32_t &next = sequence_.try_emplace(source + destination, 1).first->second;
        const auto back = sequence_.try_emplace(destination + source, 1).first;
        constexpr size_t piece = 1400; // what a network carries, where messages need not end with segments
        for (size_t at = 0; at < std::max<size_t>(payload.size(), 1); at += in_pieces ? piece : most) {
            const Octets data = payload.substr(at, in_pieces ? piece : most);
            write(tcp.number, tcp_segment(ends, ports, next, back->second, data));
            next += static_cast<uint32_t>(data.size());
        }
    } else if (facts.protocol.empty() || facts.protocol == "udp") {
        write(udp.number, udp_datagram(ends, ports, payload));
    } else {
        return "of a protocol that cannot be written";
    }
    return nullptr;
}

void CaptureWriter::write_frame(const std::string &frame) {
    const Octets sizes = little(frame.size(), 4) + little(frame.size(), 4);
    const Octets padding((4 - frame.size() % 4) % 4, '\0');
    write(block(6, little(0, 4) + little(time_ >> 32, 4) + little(time_, 4) + sizes + frame + padding));
}

void CaptureWriter::finish() {
    const bool failed = std::ferror(file_.get()) != 0;
    if (std::fclose(file_.release()) != 0 || failed) {
        throw Failure(exit_io, fmt::format("{}: cannot be written", path_));
    }
}

} // namespace tlvmsg::tool
