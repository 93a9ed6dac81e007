#include "headers.h"

#include <fmt/ranges.h>
#include <pcap/pcap.h>

#include <array>

namespace tlvmsg::tool {

namespace {

// These have one number in files and, on some systems, another in the library.
constexpr int link_raw_ip = 101;
constexpr int link_exported_pdu = 252;

std::string hardware_address(Bytes bytes) { return fmt::format("{:02x}", fmt::join(bytes, ":")); }

bool behind_ethertype(uint16_t type, FrameFacts &facts, View &frame) {
    while (type == 0x8100 || type == 0x88A8 || type == 0x9100) {
        type = number16(frame.take(4, "VLAN"), 2);
    }
    constexpr uint16_t least = 0x600; // what is less is a length, and logical link control follows
    facts.protocol = type < least ? "llc" : fmt::format("ethertype 0x{:04X}", type);
    return type == 0x0800 || type == 0x86DD;
}

bool skip_ethernet(FrameFacts &facts, View &frame) {
    const Bytes header = frame.take(14, "Ethernet");
    facts.destination = hardware_address(header.first(6));
    facts.source = hardware_address(header.subspan(6, 6));
    return behind_ethertype(number16(header, 12), facts, frame);
}

// A header of either version; both say only who sent the frame.
bool skip_cooked(size_t size, size_t type_at, size_t address_at, FrameFacts &facts, View &frame) {
    const Bytes header = frame.take(size, "Linux cooked");
    facts.source = hardware_address(header.subspan(address_at, std::min<size_t>(header[address_at - 1], 8)));
    return behind_ethertype(number16(header, type_at), facts, frame);
}

// The address family as the capturing system numbers it, in that system's byte order or big-endian.
bool skip_loopback(FrameFacts &facts, View &frame) {
    const Bytes header = frame.take(4, "loopback");
    const uint32_t family = header[0] == 0 ? number32(header, 0) : uint32_t{header[1]} << 8 | header[0];
    facts.protocol = fmt::format("family {}", family);
    constexpr std::array<uint32_t, 6> ip{2, 10, 23, 24, 28, 30};
    return std::find(ip.begin(), ip.end(), family) != ip.end();
}

// Tags with a length each, up to tag 0.
bool skip_exported_pdu(View &frame) {
    for (Bytes tag; tag.empty() || number16(tag, 0) != 0;) {
        tag = frame.take(4, "exported PDU");
        frame.skip(number16(tag, 2));
    }
    return false;
}

} // namespace

std::string link_name(int link_type) {
    const char *const name = pcap_datalink_val_to_name(link_type);
    return name == nullptr ? fmt::format("{}", link_type) : fmt::format("{} ({})", link_type, name);
}

bool skip_link(int link_type, FrameFacts &facts, View &frame) {
    switch (link_type) {
    case DLT_EN10MB:
        return skip_ethernet(facts, frame);
    case DLT_LINUX_SLL:
        return skip_cooked(16, 14, 6, facts, frame);
    case DLT_LINUX_SLL2:
        return skip_cooked(20, 0, 12, facts, frame);
    case DLT_NULL:
    case DLT_LOOP:
        return skip_loopback(facts, frame);
    case DLT_RAW:
    case DLT_IPV4:
    case DLT_IPV6:
    case link_raw_ip:
        facts.protocol = "ip";
        return true;
    case link_exported_pdu:
        return skip_exported_pdu(frame);
    default: // those of users have no headers
        if (link_type >= DLT_USER0 && link_type <= DLT_USER15) {
            return false;
        }
        throw Problem{ToolCode::link_type,
                      fmt::format("the headers of link type {} are not known; give the offset "
                                  "where messages begin",
                                  link_name(link_type))};
    }
}

} // namespace tlvmsg::tool
