#include "ip_fragments.h"

namespace tlvmsg::tool {

std::optional<std::vector<uint8_t>> IpFragments::add(const FrameFacts &facts, IpHeader &header, Bytes data,
                                                     Payloads &out) {
    const std::string key = fmt::format("{} {} {}", facts.source, facts.destination, header.id);
    const auto found = datagrams_.try_emplace(key, Datagram{facts}).first;
    if (datagrams_.size() > most_datagrams) {
        give_up(out);
    }
    Datagram &datagram = found->second;
    datagram.fill(header, data);
    if (!datagram.size || datagram.missing() != 0) {
        return std::nullopt;
    }
    header.protocol = datagram.protocol;
    std::vector<uint8_t> whole;
    for (size_t at = 0; at < *datagram.size; ++at) {
        whole.push_back(*datagram.bytes[at]);
    }
    datagrams_.erase(found);
    return whole;
}

// What came first stays where fragments overlap, and the first end that is told is the end.
void IpFragments::Datagram::fill(const IpHeader &header, Bytes data) {
    const size_t end = header.offset + data.size();
    bytes.resize(std::max(bytes.size(), end));
    for (size_t at = header.offset; at < end; ++at) {
        bytes[at] = bytes[at].value_or(data[at - header.offset]);
    }
    if (!header.more && !size) {
        size = end;
    }
    if (header.offset == 0) {
        protocol = header.protocol;
    }
}

size_t IpFragments::Datagram::missing() const {
    const auto end = bytes.begin() + static_cast<ptrdiff_t>(size.value_or(bytes.size()));
    return static_cast<size_t>(std::count(bytes.begin(), end, std::nullopt));
}

bool IpFragments::give_up(Payloads &out) {
    const auto oldest =
        std::min_element(datagrams_.begin(), datagrams_.end(), [](const auto &a, const auto &b) {
            return a.second.facts.number < b.second.facts.number;
        });
    if (oldest == datagrams_.end()) {
        return false;
    }
    const auto &[facts, protocol, bytes, size] = oldest->second;
    const size_t missing = oldest->second.missing();
    const std::string text =
        size ? fmt::format("{} of the datagram's {} bytes are missing", missing, *size)
             : fmt::format("{} bytes of the datagram have come, its end has not", bytes.size() - missing);
    out.push_back({facts, {}, Problem{ToolCode::fragment, text}});
    datagrams_.erase(oldest);
    return true;
}

} // namespace tlvmsg::tool
