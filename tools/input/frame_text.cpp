#include "frame_text.h"

#include "headers.h"

#include "cli/failure.h"

#include <pcap/pcap.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <string_view>

namespace tlvmsg::tool {

namespace {

constexpr int raw_ip = 101; // link types as in files
constexpr int cooked_2 = 276;
constexpr uint32_t most_captured = 262144;
constexpr size_t most_behind = 68; // padding, and a check sequence
constexpr size_t address_size = 6;

// A packet's length. Without a checksum, which some are captured before they get, it has to be exact.
std::optional<size_t> length_of_version_4(Bytes packet) {
    const size_t header = packet.size() < 20 ? 0 : size_t{packet[0]} % 16 * 4;
    const size_t length = header < 20 || header > packet.size() ? 0 : number_at(packet, 2);
    uint32_t sum = 0;
    for (size_t i = 0; i < header && length != 0; i += 2) {
        sum += number_at(packet, i);
    }
    const bool right = sum != 0 && sum % 0xFFFF == 0;
    const bool fits =
        right ? packet.size() <= length + most_behind : length == packet.size() && number_at(packet, 10) == 0;
    return length >= header && header >= 20 && fits ? std::optional(length) : std::nullopt;
}

// What is behind the header is common, so that no message is meant whose first number happens to be the length.
std::optional<size_t> length_of_version_6(Bytes packet) {
    constexpr std::string_view common("\x04\x06\x11\x29\x2B\x2C\x2F\x32\x33\x3A\x3C\x59");
    const size_t length = packet.size() <= 40 ? 0 : size_t{40} + number_at(packet, 4);
    const bool reports_groups = length > 41 && packet[6] == 0 && packet[40] == 58 && packet[41] == 0;
    const bool exact =
        length == packet.size() || (length > 40 && length < packet.size() && packet.size() <= most_behind);
    return exact && (reports_groups || common.find(static_cast<char>(packet[6])) != common.npos)
               ? std::optional(length)
               : std::nullopt;
}

// By its IP header; nothing where there is none for certain.
std::optional<size_t> length_of(Bytes frame, int link_type) {
    View data{frame, frame.size()};
    FrameFacts facts;
    try {
        const Next next = skip_layers({Layer::link, static_cast<uint64_t>(link_type)}, facts, data);
        const unsigned version = next.layer != Layer::ip || data.bytes.empty() ? 0 : data.bytes[0] / 16;
        const std::optional<size_t> length = version == 4   ? length_of_version_4(data.bytes)
                                             : version == 6 ? length_of_version_6(data.bytes)
                                                            : std::nullopt;
        return length ? std::optional(static_cast<size_t>(data.bytes.data() - frame.data()) + *length)
                      : std::nullopt;
    } catch (const Problem &) {
        return std::nullopt;
    }
}

// What is no IP, on a link of which nothing else is known yet: of Ethernet frames, and packets for resolving addresses, of
// which tcpdump -x leaves out the link's header.
bool may_be_beside(Bytes frame, int link_type) {
    constexpr std::array<uint8_t, 4> address_resolution{0, 1, 8, 0};
    return link_type == DLT_EN10MB ? frame.size() >= 14
                                   : link_type == raw_ip && frame.size() >= 28 &&
                                         std::ranges::equal(frame.first(4), address_resolution);
}

// Whether a frame of Ethernet is sent to a group, or has an address of those.
bool is_beside(Bytes frame, const std::vector<Bytes> &certain) {
    constexpr std::string_view groups("\x01\x33\xFF");
    const auto addresses = [](Bytes each) {
        return std::array{each.first(address_size), each.subspan(address_size, address_size)};
    };
    const auto has_address_of = [&](Bytes each) {
        const auto own = addresses(frame), others = addresses(each);
        const auto same = [](Bytes a, Bytes b) { return std::ranges::equal(a, b); };
        return std::ranges::find_first_of(own, others, same) != own.end();
    };
    return groups.find(static_cast<char>(frame[0])) != groups.npos ||
           std::ranges::any_of(certain, has_address_of);
}

std::optional<DumpedFrames> frames_on(int link_type, const std::vector<Bytes> &dumped) {
    DumpedFrames found{link_type, dumped};
    std::vector<Bytes> certain;
    std::vector<Bytes> others;
    for (const Bytes frame : dumped) {
        const std::optional<size_t> length = length_of(frame, link_type);
        if (!length && !may_be_beside(frame, link_type)) {
            return std::nullopt;
        }
        found.lengths.push_back(std::max(length.value_or(0), frame.size()));
        if (!length) {
            others.push_back(frame);
        } else if (certain.size() < 64) { // enough to know the addresses
            certain.push_back(frame);
        }
    }
    const bool belong = link_type != DLT_EN10MB ||
                        std::ranges::all_of(others, [&](Bytes each) { return is_beside(each, certain); });
    return !certain.empty() && belong ? std::optional(std::move(found)) : std::nullopt;
}

} // namespace

std::optional<DumpedFrames> frames_of(const std::vector<Bytes> &dumped) {
    for (const int link_type : {DLT_EN10MB, raw_ip, DLT_LINUX_SLL, cooked_2, DLT_NULL}) {
        if (std::optional<DumpedFrames> found = frames_on(link_type, dumped)) {
            return found;
        }
    }
    return std::nullopt;
}

File capture_of(const DumpedFrames &dumped) {
    std::string text;
    const auto add =
        [&](std::initializer_list<uint32_t> numbers) { // in the machine's order, as the first one says
            text.append(reinterpret_cast<const char *>(std::data(numbers)),
                        numbers.size() * sizeof(uint32_t));
        };
    const std::array<uint16_t, 2> version{2, 4};
    add({0xA1B2C3D4, std::bit_cast<uint32_t>(version), 0, 0, most_captured,
         static_cast<uint32_t>(dumped.link_type)});
    for (size_t i = 0; i < dumped.frames.size(); ++i) {
        const Bytes frame = dumped.frames[i];
        add({0, 0, static_cast<uint32_t>(frame.size()), static_cast<uint32_t>(dumped.lengths[i])});
        text.append(frame.begin(), frame.end());
    }
    File file(fmemopen(nullptr, text.size() + 1, "w+"), [](std::FILE *each) { std::fclose(each); });
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fflush(file.get()) != 0) {
        throw cli::Failure(cli::exit_io, fmt::format("frames: {}", std::strerror(errno)));
    }
    std::rewind(file.get());
    return file;
}

} // namespace tlvmsg::tool
