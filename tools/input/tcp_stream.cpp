#include "tcp_stream.h"

#include <fmt/format.h>

#include <cstdlib>
#include <utility>

namespace tlvmsg::tool {

int64_t TcpStream::position(uint32_t sequence) const {
    return next_ + static_cast<int32_t>(sequence - (first_ + static_cast<uint32_t>(next_)));
}

bool TcpStream::is_foreign(uint32_t sequence, bool syn) const {
    constexpr int64_t far = 16 << 20;
    return syn ? !from_syn_ || sequence != first_ : std::abs(position(sequence) - next_) > far;
}

bool TcpStream::add(const FrameFacts &facts, uint32_t sequence, View data, const std::string &cut) {
    const int64_t begin = position(sequence);
    const int64_t end = begin + static_cast<int64_t>(data.size);
    if (end <= next_) { // seen before, or not at all
        return end > 0 || from_syn_;
    }
    const auto at =
        waiting_.emplace(begin, Segment{facts, {data.bytes.begin(), data.bytes.end()}, data.size, cut});
    waiting_size_ += at->second.held();
    return true;
}

void TcpStream::acknowledge(uint32_t sequence) {
    if (!waiting_.empty() && !is_foreign(sequence, false)) {
        acknowledged_ = position(sequence);
    }
}

std::optional<Payload> TcpStream::next(bool last) {
    for (;;) {
        if (std::optional<Payload> message = framer_.next()) {
            return message;
        }
        if (waiting_.empty()) {
            return last ? framer_.rest() : std::nullopt;
        }
        const int64_t begin = waiting_.begin()->first;
        if (begin <= next_) {
            deliver_first();
        } else if (last || begin <= acknowledged_ || waiting_size_ > most_waiting) {
            return step_over_gap();
        } else {
            return std::nullopt;
        }
    }
}

std::optional<Payload> TcpStream::step_over_gap() {
    if (std::optional<Payload> rest = framer_.rest()) {
        return rest;
    }
    const auto &[begin, segment] = *waiting_.begin();
    const int64_t gap = begin - std::exchange(next_, begin);
    return problem(segment.facts, ToolCode::segment,
                   fmt::format("bytes missing before this segment: {}", gap));
}

void TcpStream::deliver_first() {
    const auto first = waiting_.extract(waiting_.begin());
    const Segment &segment = first.mapped();
    const auto seen = static_cast<size_t>(next_ - first.key());
    waiting_size_ -= segment.held();
    if (seen < segment.size) {
        next_ = first.key() + static_cast<int64_t>(segment.size);
        framer_.add(segment.facts, Bytes(segment.bytes).subspan(std::min(seen, segment.bytes.size())),
                    segment.cut);
    }
}

} // namespace tlvmsg::tool
