#include "pcapng.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace tlvmsg::tool {

namespace {

constexpr uint32_t section_block = 0x0A0D0D0A;
constexpr uint32_t interface_block = 1;
constexpr uint32_t old_packet_block = 2;
constexpr uint32_t simple_packet_block = 3;
constexpr uint32_t packet_block = 6;

uint32_t number_in(std::span<const uint8_t> bytes, bool is_big) {
    uint32_t value = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        value = value << 8 | bytes[is_big ? i : bytes.size() - 1 - i];
    }
    return value;
}

// How many ticks a second has: a power of ten or, with the highest bit, of two.
uint64_t ticks_of(uint8_t resolution) {
    const unsigned exponent = resolution % 128;
    if (exponent > (resolution < 128 ? 19 : 63)) {
        throw std::runtime_error("an interface whose times are finer than 64 bits can say");
    }
    uint64_t ticks = 1;
    for (unsigned i = 0; i < exponent; ++i) {
        ticks *= resolution < 128 ? 10 : 2;
    }
    return ticks;
}

} // namespace

// In the order of the section, which a section's own block states behind its size.
bool Pcapng::read_block() {
    std::array<uint8_t, 12> header{};
    const size_t size = std::fread(header.data(), 1, 8, file_);
    if (size == 0 && std::ferror(file_) == 0) {
        return false;
    }
    type_ = number_in(std::span(header).first(4), is_big_);
    size_t known = 0; // bytes of the body
    if (type_ == section_block) {
        known = std::fread(header.data() + 8, 1, 4, file_);
        is_big_ = number_in(std::span(header).subspan(8, 4), true) == 0x1A2B3C4D;
        interfaces_.clear();
        if (!is_big_ && number_in(std::span(header).subspan(8, 4), false) != 0x1A2B3C4D) {
            throw std::runtime_error("a section without a byte order");
        }
    }
    const size_t total = number_in(std::span(header).subspan(4, 4), is_big_);
    constexpr size_t most = size_t{16} << 20;
    if (size == 8 && (total < 12 + known || total > most || total % 4 != 0)) {
        throw std::runtime_error(fmt::format("a block of {} bytes, where 12 to {} are allowed", total, most));
    }
    body_.resize(size == 8 ? total - 8 : 0); // with the size once more behind it
    std::copy_n(header.begin() + 8, known, body_.begin());
    if (size < 8 ||
        std::fread(body_.data() + known, 1, body_.size() - known, file_) != body_.size() - known) {
        throw std::runtime_error("the file ends inside a block");
    }
    body_.resize(body_.size() - 4);
    return true;
}

uint32_t Pcapng::number(size_t offset, size_t width) const {
    if (body_.size() < offset + width) {
        throw std::runtime_error(fmt::format("a block of type {} that is too short", type_));
    }
    return number_in(std::span(body_).subspan(offset, width), is_big_);
}

void Pcapng::take_interface() {
    Interface interface { static_cast<int>(number(0, 2)), number(4) };
    for (size_t at = 8; at + 4 <= body_.size();) {
        const uint32_t code = number(at, 2), size = number(at + 2, 2);
        if (code == 9 && size == 1) {
            interface.ticks = ticks_of(static_cast<uint8_t>(number(at + 4, 1)));
        } else if (code == 14 && size == 8) {
            const uint64_t high = number(at + (is_big_ ? 4 : 8)), low = number(at + (is_big_ ? 8 : 4));
            interface.offset = static_cast<int64_t>(high << 32 | low);
        }
        at += 4 + (size + 3) / 4 * 4;
    }
    interfaces_.push_back(interface);
}

Frame Pcapng::frame(uint32_t interface, uint64_t ticks, size_t captured, size_t length,
                    size_t data_at) const {
    if (interface >= interfaces_.size()) {
        throw std::runtime_error(
            fmt::format("a frame of interface {}, of {}", interface, interfaces_.size()));
    }
    if (body_.size() < data_at || captured > body_.size() - data_at) {
        throw std::runtime_error(fmt::format("a frame of {} bytes in a block that has fewer", captured));
    }
    const Interface &of = interfaces_[interface];
    FrameFacts facts;
    facts.seconds = static_cast<int64_t>(ticks / of.ticks + static_cast<uint64_t>(of.offset));
    __extension__ using Wide = unsigned __int128;
    facts.nanoseconds = static_cast<uint32_t>(Wide{ticks % of.ticks} * 1'000'000'000 / of.ticks);
    facts.captured = captured;
    facts.length = std::max(captured, length);
    return {facts, of.link_type, std::span(body_).subspan(data_at, captured)};
}

std::optional<Frame> Pcapng::next() {
    while (read_block()) {
        const auto ticks = [&] { return uint64_t{number(4)} << 32 | number(8); };
        switch (type_) {
        case interface_block:
            take_interface();
            break;
        case packet_block:
            return frame(number(0), ticks(), number(12), number(16), 20);
        case old_packet_block:
            return frame(number(0, 2), ticks(), number(12), number(16), 20);
        case simple_packet_block: {
            const size_t length = number(0);
            const size_t snap = interfaces_.empty() ? 0 : interfaces_[0].snap_length;
            return frame(0, 0, std::min({length, body_.size() - 4, snap == 0 ? length : snap}), length, 4);
        }
        default:
            break;
        }
    }
    return std::nullopt;
}

} // namespace tlvmsg::tool
