// protobuf, with one message object a type that is used again: the fastest of its ways, since it keeps the
// memory of submessages and strings.
#include "peer.h"

#include "records.pb.h"

namespace tlvmsg_bench {

namespace {

#define SET(FIELD, Accessor) to.set_##FIELD(from.FIELD);
#define GET(FIELD, Accessor) to.FIELD = static_cast<decltype(to.FIELD)>(from.FIELD());

#define CONVERSIONS(RECORD, MESSAGE, FIELDS)                                                                 \
    void convert(const RECORD &from, peer::MESSAGE &to) { FIELDS(SET) }                                      \
    void convert(const peer::MESSAGE &from, RECORD &to) { FIELDS(GET) }

CONVERSIONS(app_sess_hdr, Session, SESSION_FIELDS)
CONVERSIONS(ifid, Interface, INTERFACE_FIELDS)
CONVERSIONS(zel_led_control, LedControl, LED_CONTROL_FIELDS)
CONVERSIONS(zel_ether_dot3_stats_bundle, Dot3Stats, DOT3_FIELDS)
CONVERSIONS(zel_vlan_id, VlanId, VLAN_ID_FIELDS)

void convert(const zel_vlan_counters &from, peer::VlanCounters &to) {
    convert(from.vlan_id, *to.mutable_vlan_id());
    VLAN_COUNTERS_FIELDS(SET)
}

void convert(const peer::VlanCounters &from, zel_vlan_counters &to) {
    convert(from.vlan_id(), to.vlan_id);
    VLAN_COUNTERS_FIELDS(GET)
}

void convert(const LedRecord &from, peer::LedControlRequest &to) {
    convert(from.session, *to.mutable_session());
    convert(from.interface, *to.mutable_interface());
    convert(from.led_control, *to.mutable_led_control());
}

bool convert(const peer::LedControlRequest &from, LedRecord &to) {
    convert(from.session(), to.session);
    convert(from.interface(), to.interface);
    convert(from.led_control(), to.led_control);
    return true;
}

void convert(const Dot3Record &from, peer::Dot3StatsUpdate &to) {
    convert(from.session, *to.mutable_session());
    convert(from.interface, *to.mutable_interface());
    convert(from.dot3_stats_bundle, *to.mutable_dot3_stats());
}

bool convert(const peer::Dot3StatsUpdate &from, Dot3Record &to) {
    convert(from.session(), to.session);
    convert(from.interface(), to.interface);
    convert(from.dot3_stats(), to.dot3_stats_bundle);
    return true;
}

void convert(const VlanRecord &from, peer::VlanStats &to) {
    convert(from.session, *to.mutable_session());
    convert(from.interface, *to.mutable_interface());
    const auto &vlans = from.vlan_stat_bundle.vlan_counters;
    to.clear_vlan_counters();
    for (size_t i = 0; i < vlans.count; ++i) {
        convert(vlans.items[i], *to.add_vlan_counters());
    }
}

bool convert(const peer::VlanStats &from, VlanRecord &to) {
    convert(from.session(), to.session);
    convert(from.interface(), to.interface);
    zel_vlan_counters *items = allocate_vlans(to, static_cast<size_t>(from.vlan_counters_size()));
    if (items == nullptr) {
        return false;
    }
    for (const peer::VlanCounters &each : from.vlan_counters()) {
        convert(each, *items++);
    }
    return true;
}

void convert(const ReportRecord &from, peer::GenericReport &to) {
    to.set_value(from.generic_report.value);
    to.set_buffer(from.generic_report.buffer.bytes, from.generic_report.buffer.count);
}

bool convert(const peer::GenericReport &from, ReportRecord &to) {
    to.generic_report.value = static_cast<uint8_t>(from.value());
    return store_text(to, from.buffer().data(), from.buffer().size());
}

template <class Record>
struct MessageOf;
template <>
struct MessageOf<LedRecord> : std::type_identity<peer::LedControlRequest> {};
template <>
struct MessageOf<Dot3Record> : std::type_identity<peer::Dot3StatsUpdate> {};
template <>
struct MessageOf<VlanRecord> : std::type_identity<peer::VlanStats> {};
template <>
struct MessageOf<ReportRecord> : std::type_identity<peer::GenericReport> {};

struct Protobuf {
    static constexpr const char *name = "protobuf";

    template <class Record>
    size_t encode(const Record &record, uint8_t *out) {
        auto &message = reused<Record>();
        convert(record, message);
        const size_t size = message.ByteSizeLong();
        if (size > max_encoded) {
            return 0;
        }
        return static_cast<size_t>(message.SerializeWithCachedSizesToArray(out) - out);
    }

    template <class Record>
    bool decode(const uint8_t *in, size_t size, Record &record) {
        auto &message = reused<Record>();
        return message.ParseFromArray(in, static_cast<int>(size)) && convert(message, record);
    }

    template <class Record>
    static auto &reused() {
        static typename MessageOf<Record>::type message;
        return message;
    }
};

} // namespace

void register_protobuf() { register_peer<Protobuf>(); }

} // namespace tlvmsg_bench
