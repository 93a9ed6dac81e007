#include "ip_fragments.h"

#include <fmt/format.h>

namespace tlvmsg::tool {

std::optional<IpDatagram> IpFragments::add(const FrameFacts &facts, const IpHeader &header, Bytes data,
                                           std::deque<Payload> &reports) {
    const IpFragment &fragment = *header.fragment;
    if (fragment.offset + data.size() > most_bytes) {
        reports.push_back(problem(facts, ToolCode::fragment,
                                  fmt::format("it reaches beyond the {} bytes of a datagram", most_bytes)));
        return std::nullopt;
    }
    Datagram &datagram = find(fmt::format("{} {} {}", facts.source, facts.destination, fragment.id), reports);
    if (datagram.count == 0) {
        datagram.facts = facts;
    }
    if (fragment.offset == 0) {
        datagram.protocol = header.protocol;
    }
    datagram.fill(fragment, data);
    if (!datagram.ended || datagram.count < datagram.bytes.size()) {
        return std::nullopt;
    }
    // It stays for now, so that fragments of it that come once more are known.
    datagram.present.assign(datagram.bytes.size(), false);
    datagram.count = 0;
    datagram.ended = false;
    datagram.repeats = true;
    return IpDatagram{datagram.protocol, datagram.bytes};
}

IpFragments::Datagram &IpFragments::find(std::string key, std::deque<Payload> &reports) {
    const auto known = std::find_if(datagrams_.begin(), datagrams_.end(),
                                    [&](const Datagram &each) { return each.key == key; });
    if (known != datagrams_.end()) {
        return *known;
    }
    if (datagrams_.size() == most_datagrams) {
        const auto done = std::find_if(datagrams_.begin(), datagrams_.end(),
                                       [](const Datagram &each) { return each.repeats; });
        give_up(done != datagrams_.end() ? done : datagrams_.begin(), reports);
    }
    return datagrams_.emplace_back(Datagram{.key = std::move(key)});
}

// What came first stays where fragments overlap, and the first end that is told is the end.
void IpFragments::Datagram::fill(const IpFragment &fragment, Bytes data) {
    const size_t end = fragment.offset + data.size();
    repeats = repeats && end <= bytes.size() &&
              std::equal(data.begin(), data.end(), bytes.data() + fragment.offset);
    if (end > bytes.size() && !ended) {
        resize(end);
    }
    for (size_t at = fragment.offset; at < std::min(end, bytes.size()); ++at) {
        if (!present[at]) {
            present[at] = true;
            bytes[at] = data[at - fragment.offset];
        }
    }
    if (!fragment.more && !ended) {
        ended = true;
        resize(end);
    }
    count = static_cast<size_t>(std::count(present.begin(), present.end(), true));
}

void IpFragments::Datagram::resize(size_t size) {
    bytes.resize(size);
    present.resize(size);
}

void IpFragments::give_up(std::list<Datagram>::iterator datagram, std::deque<Payload> &reports) {
    if (!datagram->repeats) {
        const size_t size = datagram->bytes.size();
        reports.push_back(problem(
            datagram->facts, ToolCode::fragment,
            datagram->ended
                ? fmt::format("{} of the datagram's {} bytes are missing", size - datagram->count, size)
                : fmt::format("{} bytes of the datagram have come, its end has not", datagram->count)));
    }
    datagrams_.erase(datagram);
}

void IpFragments::finish(std::deque<Payload> &reports) {
    while (!datagrams_.empty()) {
        give_up(datagrams_.begin(), reports);
    }
}

} // namespace tlvmsg::tool
