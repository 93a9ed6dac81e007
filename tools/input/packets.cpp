#include "packets.h"

#include "tools/cli/failure.h"

#include <fmt/format.h>

#include <utility>

namespace tlvmsg::tool {

namespace {

// Empty when nothing is.
std::string missing_text(View data) {
    return data.missing() == 0 ? "" : fmt::format("bytes missing at its end: {}", data.missing());
}

std::string protocol_name(uint8_t protocol) {
    return protocol == protocol_udp   ? "udp"
           : protocol == protocol_tcp ? "tcp"
                                      : fmt::format("ip {}", protocol);
}

} // namespace

Packets::Packets(File file, const std::string &name, const PacketOptions &options)
    : capture_(std::move(file), name, options.filter), offset_(options.offset), datagram_(options.framing),
      streams_(options.framing) {}

std::optional<Payload> Packets::next() {
    for (;;) {
        std::optional<Payload> payload = next_report();
        if (payload || (payload = datagram_.next()) || (payload = datagram_.rest()) ||
            (payload = streams_.next())) {
            return payload;
        }
        if (!ended_) {
            read_frame();
        } else if (failure_) {
            std::rethrow_exception(failure_);
        } else {
            return std::nullopt;
        }
    }
}

std::optional<Payload> Packets::next_report() {
    if (reports_.empty()) {
        return std::nullopt;
    }
    std::optional<Payload> report = std::move(reports_.front());
    reports_.pop_front();
    return report;
}

void Packets::read_frame() {
    std::optional<Frame> frame;
    try {
        frame = capture_.next();
    } catch (const Failure &) {
        failure_ = std::current_exception();
    }
    if (!frame) {
        ended_ = true;
        fragments_.finish(reports_);
        streams_.finish();
        return;
    }
    FrameFacts &facts = frame->facts;
    try {
        take_frame(facts, {frame->bytes, facts.length});
    } catch (const EndsInside &end) {
        reports_.push_back(
            problem(facts, ToolCode::cut, fmt::format("it ends inside the {} header", end.header)));
    }
}

void Packets::take_frame(FrameFacts &facts, View frame) {
    if (offset_) {
        frame.skip(*offset_);
        return take_datagram(facts, frame);
    }
    const Network network = skip_link(capture_.link_type(), facts, frame);
    if (network == Network::unknown) {
        reports_.push_back(problem(
            facts, ToolCode::link_type,
            fmt::format("the headers of link type {} are not known; give the offset where messages begin",
                        capture_.link_name())));
        return;
    }
    const std::optional<IpHeader> ip = network == Network::ip ? skip_ip(facts, frame) : std::nullopt;
    return ip ? take_ip(facts, *ip, frame) : take_datagram(facts, frame);
}

void Packets::take_ip(FrameFacts &facts, const IpHeader &header, View data) {
    facts.protocol = protocol_name(header.protocol);
    if (!header.fragment) {
        take_ip_data(facts, header.protocol, data);
    } else if (data.missing() != 0) {
        reports_.push_back(problem(facts, ToolCode::cut, missing_text(data)));
    } else if (const auto whole = fragments_.add(facts, header, data.bytes, reports_)) {
        take_ip_data(facts, whole->protocol, {whole->bytes, whole->bytes.size()});
    }
}

void Packets::take_ip_data(FrameFacts &facts, uint8_t protocol, View data) {
    skip_extensions(protocol, data);
    facts.protocol = protocol_name(protocol);
    if (protocol == protocol_tcp) {
        const TcpHeader header = skip_tcp(facts, data);
        return streams_.add(facts, header, data, missing_text(data), reports_);
    }
    if (protocol == protocol_udp) {
        skip_udp(facts, data);
    }
    take_datagram(facts, data);
}

void Packets::take_datagram(const FrameFacts &facts, View data) {
    datagram_.add(facts, data.bytes, missing_text(data));
}

} // namespace tlvmsg::tool
