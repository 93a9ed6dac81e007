#include "packets.h"

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

std::optional<Payload> Packets::next() {
    while (payloads_.empty()) {
        if (!ended_) {
            ended_ = !read_frame();
        } else if (!fragments_.give_up(payloads_) && !streams_.give_up(payloads_)) {
            capture_.check();
            return std::nullopt;
        }
    }
    std::optional<Payload> payload = std::move(payloads_.front());
    payloads_.pop_front();
    return payload;
}

bool Packets::read_frame() {
    std::optional<Frame> frame = capture_.next();
    if (!frame) {
        return false;
    }
    FrameFacts &facts = frame->facts;
    try {
        take_frame(facts, {frame->bytes, facts.length});
    } catch (Problem &problem) {
        payloads_.push_back({facts, {}, std::move(problem)});
    }
    return true;
}

void Packets::take_frame(FrameFacts &facts, View frame) {
    std::optional<IpHeader> ip;
    if (options_.offset) {
        frame.skip(*options_.offset);
    } else if (skip_link(capture_.link_type(), facts, frame)) {
        ip = skip_ip(facts, frame);
    }
    return ip ? take_ip(facts, *ip, frame) : take_datagram(facts, frame);
}

void Packets::take_ip(FrameFacts &facts, IpHeader header, View data) {
    facts.protocol = protocol_name(header.protocol);
    std::optional<std::vector<uint8_t>> whole;
    if (header.is_fragment()) {
        if (data.missing() != 0) {
            throw Problem{ToolCode::cut, missing_text(data)};
        }
        whole = fragments_.add(facts, header, data.bytes, payloads_);
        if (!whole) {
            return;
        }
        data = {*whole, whole->size()};
    }
    skip_extensions(header.protocol, data);
    facts.protocol = protocol_name(header.protocol);
    if (header.protocol == protocol_tcp) {
        const TcpHeader tcp = skip_tcp(facts, data);
        return streams_.add(facts, tcp, data, missing_text(data), payloads_);
    }
    if (header.protocol == protocol_udp) {
        skip_udp(facts, data);
    }
    take_datagram(facts, data);
}

void Packets::take_datagram(const FrameFacts &facts, View data) {
    Framer framer(options_.framing, true);
    framer.add(facts, data.bytes, missing_text(data), payloads_);
    framer.finish(payloads_);
}

} // namespace tlvmsg::tool
