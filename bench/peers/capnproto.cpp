// Cap'n Proto: built in a segment that is used again, and read through the reader that checks bounds.
#include "peer.h"

#include "records.capnp.h"

#include <capnp/message.h>
#include <capnp/serialize.h>

namespace tlvmsg_bench {

namespace {

#define SET(FIELD, Accessor) to.set##Accessor(from.FIELD);
#define GET(FIELD, Accessor) to.FIELD = from.get##Accessor();

#define CONVERSIONS(RECORD, STRUCT, FIELDS)                                                                  \
    void build(const RECORD &from, peer_capnp::STRUCT::Builder to) { FIELDS(SET) }                           \
    void read(peer_capnp::STRUCT::Reader from, RECORD &to) { FIELDS(GET) }

CONVERSIONS(app_sess_hdr, Session, SESSION_FIELDS)
CONVERSIONS(ifid, Interface, INTERFACE_FIELDS)
CONVERSIONS(zel_led_control, LedControl, LED_CONTROL_FIELDS)
CONVERSIONS(zel_ether_dot3_stats_bundle, Dot3Stats, DOT3_FIELDS)
CONVERSIONS(zel_vlan_id, VlanId, VLAN_ID_FIELDS)

void build(const zel_vlan_counters &from, peer_capnp::VlanCounters::Builder to) {
    build(from.vlan_id, to.initVlanId());
    VLAN_COUNTERS_FIELDS(SET)
}

void read(peer_capnp::VlanCounters::Reader from, zel_vlan_counters &to) {
    read(from.getVlanId(), to.vlan_id);
    VLAN_COUNTERS_FIELDS(GET)
}

void build(const LedRecord &from, peer_capnp::LedControlRequest::Builder to) {
    build(from.session, to.initSession());
    build(from.interface, to.initInterfaceId());
    build(from.led_control, to.initLedControl());
}

bool read(peer_capnp::LedControlRequest::Reader from, LedRecord &to) {
    read(from.getSession(), to.session);
    read(from.getInterfaceId(), to.interface);
    read(from.getLedControl(), to.led_control);
    return true;
}

void build(const Dot3Record &from, peer_capnp::Dot3StatsUpdate::Builder to) {
    build(from.session, to.initSession());
    build(from.interface, to.initInterfaceId());
    build(from.dot3_stats_bundle, to.initDot3Stats());
}

bool read(peer_capnp::Dot3StatsUpdate::Reader from, Dot3Record &to) {
    read(from.getSession(), to.session);
    read(from.getInterfaceId(), to.interface);
    read(from.getDot3Stats(), to.dot3_stats_bundle);
    return true;
}

void build(const VlanRecord &from, peer_capnp::VlanStats::Builder to) {
    build(from.session, to.initSession());
    build(from.interface, to.initInterfaceId());
    const auto &vlans = from.vlan_stat_bundle.vlan_counters;
    auto list = to.initVlanCounters(vlans.count);
    for (unsigned i = 0; i < vlans.count; ++i) {
        build(vlans.items[i], list[i]);
    }
}

bool read(peer_capnp::VlanStats::Reader from, VlanRecord &to) {
    read(from.getSession(), to.session);
    read(from.getInterfaceId(), to.interface);
    const auto list = from.getVlanCounters();
    zel_vlan_counters *items = allocate_vlans(to, list.size());
    if (items == nullptr) {
        return false;
    }
    for (auto each : list) {
        read(each, *items++);
    }
    return true;
}

void build(const ReportRecord &from, peer_capnp::GenericReport::Builder to) {
    to.setValue(from.generic_report.value);
    to.setBuffer(capnp::Data::Reader(from.generic_report.buffer.bytes, from.generic_report.buffer.count));
}

bool read(peer_capnp::GenericReport::Reader from, ReportRecord &to) {
    to.generic_report.value = from.getValue();
    const auto text = from.getBuffer();
    return store_text(to, text.begin(), text.size());
}

template <class Record>
struct StructOf;
template <>
struct StructOf<LedRecord> : std::type_identity<peer_capnp::LedControlRequest> {};
template <>
struct StructOf<Dot3Record> : std::type_identity<peer_capnp::Dot3StatsUpdate> {};
template <>
struct StructOf<VlanRecord> : std::type_identity<peer_capnp::VlanStats> {};
template <>
struct StructOf<ReportRecord> : std::type_identity<peer_capnp::GenericReport> {};

struct CapnProto {
    static constexpr const char *name = "capnproto";

    // The builder clears what it used of the segment when it is done, as the next one needs it.
    template <class Record>
    size_t encode(const Record &record, uint8_t *out) {
        capnp::MallocMessageBuilder message(kj::arrayPtr(segment, max_encoded / sizeof(capnp::word)));
        build(record, message.initRoot<typename StructOf<Record>::type>());
        kj::ArrayOutputStream stream(kj::arrayPtr(out, max_encoded));
        capnp::writeMessage(stream, message);
        return stream.getArray().size();
    }

    template <class Record>
    bool decode(const uint8_t *in, size_t size, Record &record) {
        const auto *words = reinterpret_cast<const capnp::word *>(in);
        capnp::FlatArrayMessageReader message(kj::arrayPtr(words, size / sizeof(capnp::word)));
        return read(message.getRoot<typename StructOf<Record>::type>(), record);
    }

    capnp::word segment[max_encoded / sizeof(capnp::word)] = {};
};

} // namespace

void register_capnproto() { register_peer<CapnProto>(); }

} // namespace tlvmsg_bench
