#include "tcp_streams.h"

#include <fmt/ranges.h>

#include <cstdlib>
#include <numeric>

namespace tlvmsg::tool {

namespace {

constexpr uint8_t flag_syn = 0x02;

std::string flag_names(uint8_t flags) {
    std::vector<const char *> names;
    for (const char *const name : {"FIN", "SYN", "RST", "PSH", "ACK", "URG"}) {
        if (flags % 2 != 0) {
            names.push_back(name);
        }
        flags /= 2;
    }
    return names.empty() ? "no flag" : fmt::format("{}", fmt::join(names, ", "));
}

Problem has_come() { return {ToolCode::segment, "all of its bytes have come before", Loss::none}; }

} // namespace

int64_t TcpStream::position(uint32_t sequence) const {
    return next_ + static_cast<int32_t>(sequence - static_cast<uint32_t>(next_));
}

bool TcpStream::is_foreign(uint32_t sequence, bool syn) const {
    constexpr int64_t far = 16 << 20;
    const bool begins_elsewhere = syn && sequence != static_cast<uint32_t>(first_);
    return begins_elsewhere || std::abs(position(sequence) - next_) > far;
}

void TcpStream::add(const FrameFacts &facts, uint32_t sequence, View data, const std::string &cut,
                    Payloads &out) {
    last_frame_ = facts.number;
    const int64_t begin = position(sequence);
    const int64_t end = begin + static_cast<int64_t>(data.size);
    if (data.size != 0 && begin < first_ && end <= next_) {
        throw Problem{ToolCode::segment,
                      fmt::format("{} of its {} bytes lie before the first segment seen of its connection",
                                  std::min(first_, end) - begin, data.size)};
    }
    if (data.size != 0 && end <= next_) {
        throw has_come();
    }
    if (end > next_) {
        const auto at =
            waiting_.emplace(begin, Segment{facts, {data.bytes.begin(), data.bytes.end()}, end, cut});
        waiting_size_ += at->second.held();
    }
    deliver(most_waiting, out);
}

// What is in order; while more than `most` waits, also what is behind a gap.
void TcpStream::deliver(size_t most, Payloads &out) {
    while (!waiting_.empty() && (waiting_.begin()->first <= next_ || waiting_size_ > most)) {
        const auto first = waiting_.extract(waiting_.begin());
        const int64_t begin = first.key();
        const Segment &segment = first.mapped();
        waiting_size_ -= segment.held();
        if (begin > next_) {
            framer_.finish(out);
            const std::string text = fmt::format("bytes missing before this segment: {}", begin - next_);
            out.push_back({segment.facts, {}, Problem{ToolCode::segment, text, Loss::gap}});
            next_ = begin;
        }
        if (segment.end > next_) {
            const size_t seen = std::min(static_cast<size_t>(next_ - begin), segment.bytes.size());
            framer_.add(segment.facts, Bytes(segment.bytes).subspan(seen), segment.cut, out);
            next_ = segment.end;
        } else {
            out.push_back({segment.facts, {}, has_come()});
        }
    }
}

void TcpStream::finish(Payloads &out) {
    deliver(0, out);
    framer_.finish(out);
}

void TcpStreams::add(const FrameFacts &facts, const TcpHeader &header, View data, const std::string &cut,
                     Payloads &out) {
    const bool syn = (header.flags & flag_syn) != 0;
    const uint32_t sequence = header.sequence + (syn ? 1 : 0);
    if (data.size != 0 || syn) {
        const std::string key = fmt::format("{} {} {} {}", facts.source, facts.ports->source,
                                            facts.destination, facts.ports->destination);
        auto stream = streams_.try_emplace(key, framing_, sequence, syn).first;
        if (stream->second.is_foreign(sequence, syn)) {
            stream->second.finish(out);
            streams_.erase(stream);
            stream = streams_.try_emplace(key, framing_, sequence, syn).first;
        }
        stream->second.add(facts, sequence, data, cut, out);
    }
    while (streams_.size() > most_streams || held() > most_held) {
        give_up(out);
    }
    if (data.size == 0 && !framing_.by_length()) {
        throw Problem{ToolCode::segment, fmt::format("no data ({})", flag_names(header.flags)), Loss::none};
    }
}

size_t TcpStreams::held() const {
    return std::accumulate(streams_.begin(), streams_.end(), size_t{0},
                           [](size_t sum, const auto &each) { return sum + each.second.held(); });
}

bool TcpStreams::give_up(Payloads &out) {
    const auto oldest = std::min_element(streams_.begin(), streams_.end(), [](const auto &a, const auto &b) {
        return a.second.last_frame() < b.second.last_frame();
    });
    if (oldest == streams_.end()) {
        return false;
    }
    oldest->second.finish(out);
    streams_.erase(oldest);
    return true;
}

} // namespace tlvmsg::tool
