#include "frame_text.h"

#include "headers.h"

#include "cli/failure.h"

#include <pcap/pcap.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <initializer_list>

namespace tlvmsg::tool {

namespace {

constexpr int raw_ip = 101;        // in files
constexpr size_t least_frame = 60; // shorter ones are padded
constexpr uint32_t most_captured = 262144;

bool is_ip_version_4(Bytes packet, size_t padding) {
    const size_t header = packet.size() < 20 ? 0 : size_t{packet[0]} % 16 * 4,
                 length = header == 0 ? 0 : number_at(packet, 2);
    if (header < 20 || length < header || length > packet.size() || packet.size() - length > padding) {
        return false;
    }
    uint32_t sum = 0;
    for (size_t i = 0; i < header; i += 2) {
        sum += number_at(packet, i);
    }
    return sum % 0xFFFF == 0 && sum != 0;
}

bool is_ip_version_6(Bytes packet, size_t padding) {
    const size_t length = packet.size() < 40 ? 0 : size_t{40} + number_at(packet, 4);
    return length > 40 && length <= packet.size() && packet.size() - length <= padding;
}

bool is_frame(Bytes frame, int link_type) {
    View data{frame, frame.size()};
    FrameFacts facts;
    try {
        if (skip_layers({Layer::link, static_cast<uint64_t>(link_type)}, facts, data).layer != Layer::ip ||
            data.bytes.empty()) {
            return false;
        }
    } catch (const Problem &) {
        return false;
    }
    const size_t padding = frame.size() <= least_frame ? frame.size() : 0;
    const unsigned version = data.bytes[0] / 16;
    return (version == 4 && is_ip_version_4(data.bytes, padding)) ||
           (version == 6 && is_ip_version_6(data.bytes, padding));
}

} // namespace

std::optional<int> link_type_of(std::span<const Bytes> frames) {
    for (const int link_type : {DLT_EN10MB, raw_ip}) {
        if (!frames.empty() &&
            std::ranges::all_of(frames, [&](Bytes each) { return is_frame(each, link_type); })) {
            return link_type;
        }
    }
    return std::nullopt;
}

File capture_of(std::span<const Bytes> frames, int link_type) {
    std::string text;
    const auto add =
        [&](std::initializer_list<uint32_t> numbers) { // in the machine's order, as the first one says
            text.append(reinterpret_cast<const char *>(std::data(numbers)),
                        numbers.size() * sizeof(uint32_t));
        };
    const std::array<uint16_t, 2> version{2, 4};
    add({0xA1B2C3D4, std::bit_cast<uint32_t>(version), 0, 0, most_captured,
         static_cast<uint32_t>(link_type)});
    for (const Bytes frame : frames) {
        const auto size = static_cast<uint32_t>(frame.size());
        add({0, 0, size, size});
        text.append(frame.begin(), frame.end());
    }
    File file(std::tmpfile(), [](std::FILE *each) { std::fclose(each); });
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fflush(file.get()) != 0) {
        throw cli::Failure(cli::exit_io, fmt::format("a temporary file: {}", std::strerror(errno)));
    }
    std::rewind(file.get());
    return file;
}

} // namespace tlvmsg::tool
