#include "packets.h"

namespace tlvmsg::tool {

namespace {

// Empty when nothing is.
std::string missing_text(View data) {
    return data.missing() == 0 ? "" : fmt::format("bytes missing at its end: {}", data.missing());
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

void Packets::take_frame(FrameFacts &facts, View data) {
    std::vector<uint8_t> datagram; // that fragments made
    Next next{Layer::link, static_cast<uint64_t>(capture_.link_type())};
    if (options_.offset) {
        data.skip(*options_.offset);
        next = {Layer::payload};
    }
    std::optional<IpHeader> ip;
    while ((next = skip_layers(next, facts, data)).layer == Layer::ip && (ip = skip_ip(facts, data))) {
        next = {Layer::ip_protocol, ip->protocol};
        if (ip->is_fragment()) {
            facts.protocol = protocol_name(next, "");
            if (!put_together(facts, *ip, data, datagram)) {
                return;
            }
        }
        skip_extensions(ip->protocol, data);
        next.number = ip->protocol;
    }
    if (next == tcp) {
        const TcpHeader header = skip_tcp(facts, data);
        return streams_.add(facts, header, data, missing_text(data), payloads_);
    }
    take_datagram(facts, data);
}

// Whether the fragment completes a datagram, which is then the data.
bool Packets::put_together(const FrameFacts &facts, IpHeader &header, View &data,
                           std::vector<uint8_t> &datagram) {
    if (data.missing() != 0) {
        throw Problem{ToolCode::cut, missing_text(data)};
    }
    std::optional<std::vector<uint8_t>> whole = fragments_.add(facts, header, data.bytes, payloads_);
    if (whole) {
        datagram = std::move(*whole);
        data = {datagram, datagram.size()};
    }
    return whole.has_value();
}

void Packets::take_datagram(const FrameFacts &facts, View data) {
    Framer framer(options_.framing, true);
    framer.add(facts, data.bytes, missing_text(data), payloads_);
    framer.finish(payloads_);
}

} // namespace tlvmsg::tool
