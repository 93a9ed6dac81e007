#include "tcp_streams.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <utility>

namespace tlvmsg::tool {

namespace {

constexpr uint8_t flag_syn = 0x02;
constexpr uint8_t flag_ack = 0x10;

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

} // namespace

void TcpStreams::add(const FrameFacts &facts, const TcpHeader &header, View data, const std::string &cut,
                     std::deque<Payload> &reports) {
    const std::string from = fmt::format("{} {}", facts.source, facts.ports->source);
    const std::string to = fmt::format("{} {}", facts.destination, facts.ports->destination);
    const bool forward = from < to;
    Connection &connection = find(forward ? from + " " + to : to + " " + from);
    std::optional<TcpStream> &stream = connection.streams[forward ? 0 : 1];
    std::optional<TcpStream> &other = connection.streams[forward ? 1 : 0];
    if ((header.flags & flag_ack) != 0 && other) {
        other->acknowledge(header.acknowledgement);
    }
    const bool syn = (header.flags & flag_syn) != 0;
    const uint32_t sequence = header.sequence + (syn ? 1 : 0);
    if (data.size != 0 || syn) {
        if (stream && stream->is_foreign(sequence, syn)) {
            leaving_.push_back(*std::exchange(stream, std::nullopt));
        }
        if (!stream) {
            stream.emplace(framing_, sequence, syn);
        }
    }
    if (data.size == 0 && !framing_.by_length()) {
        reports.push_back(
            problem(facts, ToolCode::segment, fmt::format("no data ({})", flag_names(header.flags))));
    } else if (data.size != 0 && !stream->add(facts, sequence, data, cut)) {
        reports.push_back(
            problem(facts, ToolCode::segment, "it lies before the first segment seen of its connection"));
    }
}

TcpStreams::Connection &TcpStreams::find(const std::string &key) {
    const auto known = std::find_if(connections_.begin(), connections_.end(),
                                    [&](const Connection &each) { return each.key == key; });
    if (known == connections_.end()) {
        connections_.push_front({key});
    } else {
        connections_.splice(connections_.begin(), connections_, known);
    }
    while (connections_.size() > most_connections || (connections_.size() > 1 && held() > most_held)) {
        drop_last();
    }
    return connections_.front();
}

void TcpStreams::drop_last() {
    for (std::optional<TcpStream> &stream : connections_.back().streams) {
        if (stream) {
            leaving_.push_back(std::move(*stream));
        }
    }
    connections_.pop_back();
}

size_t TcpStreams::held() const {
    size_t held = 0;
    for (const Connection &connection : connections_) {
        for (const std::optional<TcpStream> &stream : connection.streams) {
            held += stream ? stream->held() : 0;
        }
    }
    return held;
}

std::optional<Payload> TcpStreams::next() {
    for (; !leaving_.empty(); leaving_.pop_front()) {
        if (std::optional<Payload> payload = leaving_.front().next(true)) {
            return payload;
        }
    }
    if (!connections_.empty()) {
        for (std::optional<TcpStream> &stream : connections_.front().streams) {
            if (std::optional<Payload> payload = stream ? stream->next(false) : std::nullopt) {
                return payload;
            }
        }
    }
    return std::nullopt;
}

void TcpStreams::finish() {
    while (!connections_.empty()) {
        drop_last();
    }
}

} // namespace tlvmsg::tool
