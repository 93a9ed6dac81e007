// How a peer is measured. A peer is a class with a `name` and, for each of the four records,
//
//     size_t encode(const Record &record, uint8_t *out)                   bytes written; at most max_encoded
//     bool decode(const uint8_t *in, size_t size, Record &record)
#pragma once

#include "operations.h"

namespace tlvmsg_bench {

inline constexpr size_t max_encoded = 16384;
inline constexpr size_t max_vlans = 255;

using LedRecord = LedControl::record;
using Dot3Record = Dot3Stats::record;
using VlanRecord = VlanStats::record;
using ReportRecord = GenericReport::record;

// Allocates room for so many counters in the record; null when they are too many.
inline zel_vlan_counters *allocate_vlans(VlanRecord &record, size_t count) {
    auto &array = record.vlan_stat_bundle.vlan_counters;
    const auto size = static_cast<uint32_t>(count * sizeof(zel_vlan_counters));
    array.items = count > max_vlans ? nullptr : static_cast<zel_vlan_counters *>(tlv_malloc(size));
    array.count = static_cast<uint8_t>(array.items == nullptr ? 0 : count);
    return array.items;
}

// Copies the text; false when it is too long.
inline bool store_text(ReportRecord &record, const void *text, size_t size) {
    auto &buffer = record.generic_report.buffer;
    if (size > sizeof buffer.bytes) {
        return false;
    }
    buffer.count = static_cast<uint16_t>(size);
    std::memcpy(buffer.bytes, text, size);
    return true;
}

template <class Peer, class AnyRow>
void register_peer_row(const AnyRow &row) {
    [[maybe_unused]] static Peer peer; // g++ overlooks the use of one without data
    static const RowBuffers<AnyRow> buffers(row);
    static const Buffer encoded(max_encoded, Buffer::For::Reading);
    static const Buffer out(max_encoded, Buffer::For::Writing);
    static const size_t size = peer.encode(buffers.values(), encoded.data());
    if (!peer.decode(encoded.data(), size, buffers.decoded()) || !buffers.matches(buffers.decoded())) {
        throw std::logic_error(std::string(Peer::name) + ", " + row.name + ": decodes to something else");
    }
    release(buffers.decoded());

    const std::string prefix = std::string("row/") + row.name;
    const auto add = [&prefix](const char *operation, auto run) {
        benchmark::RegisterBenchmark((prefix + operation + Peer::name).c_str(),
                                     [run](benchmark::State &state) {
                                         for (auto _ : state) {
                                             run();
                                         }
                                         state.counters["wire"] = static_cast<double>(size);
                                     });
    };
    add("/encode/", [] { keep(peer.encode(buffers.values(), out.data())); });
    add("/decode/", [] {
        keep(peer.decode(encoded.data(), size, buffers.decoded()));
        release(buffers.decoded());
    });
}

template <class Peer>
void register_peer() {
    for_each_row([](const auto &row) { register_peer_row<Peer>(row); });
}

} // namespace tlvmsg_bench
