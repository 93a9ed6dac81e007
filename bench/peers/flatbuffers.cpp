// FlatBuffers: tables, verified before they are read. The builder is used again and keeps its memory.
#include "peer.h"

#include "records_generated.h"

namespace tlvmsg_bench {

namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;

#define ADD(FIELD, Accessor) to.add_##FIELD(from.FIELD);
#define GET(FIELD, Accessor) to.FIELD = from.FIELD();

#define CONVERSIONS(RECORD, TABLE, FIELDS)                                                                   \
    Offset<peer_flat::TABLE> build(FlatBufferBuilder &builder, const RECORD &from) {                         \
        peer_flat::TABLE##Builder to(builder);                                                               \
        FIELDS(ADD)                                                                                          \
        return to.Finish();                                                                                  \
    }                                                                                                        \
    bool read(const peer_flat::TABLE *table, RECORD &to) {                                                   \
        if (table == nullptr) {                                                                              \
            return false;                                                                                    \
        }                                                                                                    \
        const peer_flat::TABLE &from = *table;                                                               \
        FIELDS(GET)                                                                                          \
        return true;                                                                                         \
    }

CONVERSIONS(app_sess_hdr, Session, SESSION_FIELDS)
CONVERSIONS(ifid, Interface, INTERFACE_FIELDS)
CONVERSIONS(zel_led_control, LedControl, LED_CONTROL_FIELDS)
CONVERSIONS(zel_ether_dot3_stats_bundle, Dot3Stats, DOT3_FIELDS)
CONVERSIONS(zel_vlan_id, VlanId, VLAN_ID_FIELDS)

Offset<peer_flat::VlanCounters> build(FlatBufferBuilder &builder, const zel_vlan_counters &from) {
    const auto vlan_id = build(builder, from.vlan_id);
    peer_flat::VlanCountersBuilder to(builder);
    to.add_vlan_id(vlan_id);
    VLAN_COUNTERS_FIELDS(ADD)
    return to.Finish();
}

bool read(const peer_flat::VlanCounters &from, zel_vlan_counters &to) {
    VLAN_COUNTERS_FIELDS(GET)
    return read(from.vlan_id(), to.vlan_id);
}

Offset<peer_flat::LedControlRequest> build(FlatBufferBuilder &builder, const LedRecord &from) {
    const auto session = build(builder, from.session);
    const auto interface = build(builder, from.interface);
    return CreateLedControlRequest(builder, session, interface, build(builder, from.led_control));
}

bool read(const peer_flat::LedControlRequest &from, LedRecord &to) {
    return read(from.session(), to.session) && read(from.interface(), to.interface) &&
           read(from.led_control(), to.led_control);
}

Offset<peer_flat::Dot3StatsUpdate> build(FlatBufferBuilder &builder, const Dot3Record &from) {
    const auto session = build(builder, from.session);
    const auto interface = build(builder, from.interface);
    return CreateDot3StatsUpdate(builder, session, interface, build(builder, from.dot3_stats_bundle));
}

bool read(const peer_flat::Dot3StatsUpdate &from, Dot3Record &to) {
    return read(from.session(), to.session) && read(from.interface(), to.interface) &&
           read(from.dot3_stats(), to.dot3_stats_bundle);
}

Offset<peer_flat::VlanStats> build(FlatBufferBuilder &builder, const VlanRecord &from) {
    const auto session = build(builder, from.session);
    const auto interface = build(builder, from.interface);
    const auto &vlans = from.vlan_stat_bundle.vlan_counters;
    Offset<peer_flat::VlanCounters> offsets[max_vlans];
    for (size_t i = 0; i < vlans.count; ++i) {
        offsets[i] = build(builder, vlans.items[i]);
    }
    return CreateVlanStats(builder, session, interface, builder.CreateVector(offsets, vlans.count));
}

bool read(const peer_flat::VlanStats &from, VlanRecord &to) {
    const auto *vlans = from.vlan_counters();
    zel_vlan_counters *items = vlans == nullptr ? nullptr : allocate_vlans(to, vlans->size());
    if (items == nullptr) {
        return false;
    }
    bool complete = read(from.session(), to.session) && read(from.interface(), to.interface);
    for (const peer_flat::VlanCounters *each : *vlans) {
        complete = read(*each, *items++) && complete;
    }
    return complete;
}

Offset<peer_flat::GenericReport> build(FlatBufferBuilder &builder, const ReportRecord &from) {
    const auto &buffer = from.generic_report.buffer;
    return peer_flat::CreateGenericReport(builder, from.generic_report.value,
                                          builder.CreateVector(buffer.bytes, buffer.count));
}

bool read(const peer_flat::GenericReport &from, ReportRecord &to) {
    to.generic_report.value = from.value();
    return from.buffer() != nullptr && store_text(to, from.buffer()->data(), from.buffer()->size());
}

template <class Record>
struct TableOf;
template <>
struct TableOf<LedRecord> : std::type_identity<peer_flat::LedControlRequest> {};
template <>
struct TableOf<Dot3Record> : std::type_identity<peer_flat::Dot3StatsUpdate> {};
template <>
struct TableOf<VlanRecord> : std::type_identity<peer_flat::VlanStats> {};
template <>
struct TableOf<ReportRecord> : std::type_identity<peer_flat::GenericReport> {};

struct FlatBuffers {
    static constexpr const char *name = "flatbuffers";

    template <class Record>
    size_t encode(const Record &record, uint8_t *out) {
        builder.Clear();
        builder.Finish(build(builder, record));
        const size_t size = builder.GetSize();
        if (size > max_encoded) {
            return 0;
        }
        std::memcpy(out, builder.GetBufferPointer(), size);
        return size;
    }

    template <class Record>
    bool decode(const uint8_t *in, size_t size, Record &record) {
        using Table = typename TableOf<Record>::type;
        flatbuffers::Verifier verifier(in, size);
        return verifier.VerifyBuffer<Table>(nullptr) && read(*flatbuffers::GetRoot<Table>(in), record);
    }

    FlatBufferBuilder builder{max_encoded};
};

} // namespace

void register_flatbuffers() { register_peer<FlatBuffers>(); }

} // namespace tlvmsg_bench
