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

// Of what is no IP: whether it may be on the link on which those frames are.
bool is_beside(Bytes frame, const DumpedFrames &certain) {
    constexpr std::array<uint8_t, 4> address_resolution{
        0, 1, 8, 0}; // of which tcpdump -x leaves out the link's header
    if (certain.link_type != DLT_EN10MB || frame.size() < 14) {
        return certain.link_type == raw_ip && frame.size() >= 28 &&
               std::ranges::equal(frame.first(4), address_resolution);
    }
    constexpr std::string_view groups("\x01\x33\xFF");
    const auto has_address_of = [&](Bytes each) {
        const auto own = frame.first(2 * address_size), others = each.first(2 * address_size);
        return std::ranges::equal(own.first(address_size), others.first(address_size)) ||
               std::ranges::equal(own.last(address_size), others.last(address_size)) ||
               std::ranges::equal(own.first(address_size), others.last(address_size)) ||
               std::ranges::equal(own.last(address_size), others.first(address_size));
    };
    return groups.find(static_cast<char>(frame[0])) != groups.npos ||
           std::ranges::any_of(certain.frames, has_address_of);
}

} // namespace

std::optional<DumpedFrames> frames_of(const std::vector<Bytes> &dumped) {
    for (const int link_type : {DLT_EN10MB, raw_ip, DLT_LINUX_SLL, cooked_2, DLT_NULL}) {
        DumpedFrames found{link_type};
        DumpedFrames certain{link_type};
        for (const Bytes frame : dumped) {
            const std::optional<size_t> length = length_of(frame, link_type);
            found.frames.push_back(frame);
            found.lengths.push_back(std::max(length.value_or(0), frame.size()));
            if (length && certain.frames.size() < 64) { // enough to know the addresses
                certain.frames.push_back(frame);
            }
        }
        const auto belongs = [&](Bytes frame) {
            return length_of(frame, link_type) || is_beside(frame, certain);
        };
        if (!certain.frames.empty() && std::ranges::all_of(dumped, belongs)) {
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
