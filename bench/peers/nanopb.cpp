// nanopb, by way of its generated structures with fixed room for arrays.
#include "peer.h"

#include "nanopb/records.pb.h"

#include <pb_decode.h>
#include <pb_encode.h>

namespace tlvmsg_bench {

namespace {

#define COPY(FIELD, Accessor) to.FIELD = static_cast<decltype(to.FIELD)>(from.FIELD);

#define CONVERSION(RECORD, MESSAGE, FIELDS)                                                                  \
    void convert(const RECORD &from, peer_##MESSAGE &to) { FIELDS(COPY) }                                    \
    void convert(const peer_##MESSAGE &from, RECORD &to) { FIELDS(COPY) }

CONVERSION(app_sess_hdr, Session, SESSION_FIELDS)
CONVERSION(ifid, Interface, INTERFACE_FIELDS)
CONVERSION(zel_led_control, LedControl, LED_CONTROL_FIELDS)
CONVERSION(zel_ether_dot3_stats_bundle, Dot3Stats, DOT3_FIELDS)
CONVERSION(zel_vlan_id, VlanId, VLAN_ID_FIELDS)

void convert(const zel_vlan_counters &from, peer_VlanCounters &to) {
    to.has_vlan_id = true;
    convert(from.vlan_id, to.vlan_id);
    VLAN_COUNTERS_FIELDS(COPY)
}

void convert(const peer_VlanCounters &from, zel_vlan_counters &to) {
    convert(from.vlan_id, to.vlan_id);
    VLAN_COUNTERS_FIELDS(COPY)
}

template <class Record, class Message>
void convert_head(const Record &from, Message &to) {
    to.has_session = true;
    convert(from.session, to.session);
    to.has_interface = true;
    convert(from.interface, to.interface);
}

void convert(const LedRecord &from, peer_LedControlRequest &to) {
    convert_head(from, to);
    to.has_led_control = true;
    convert(from.led_control, to.led_control);
}

bool convert(const peer_LedControlRequest &from, LedRecord &to) {
    convert(from.session, to.session);
    convert(from.interface, to.interface);
    convert(from.led_control, to.led_control);
    return true;
}

void convert(const Dot3Record &from, peer_Dot3StatsUpdate &to) {
    convert_head(from, to);
    to.has_dot3_stats = true;
    convert(from.dot3_stats_bundle, to.dot3_stats);
}

bool convert(const peer_Dot3StatsUpdate &from, Dot3Record &to) {
    convert(from.session, to.session);
    convert(from.interface, to.interface);
    convert(from.dot3_stats, to.dot3_stats_bundle);
    return true;
}

void convert(const VlanRecord &from, peer_VlanStats &to) {
    convert_head(from, to);
    const auto &vlans = from.vlan_stat_bundle.vlan_counters;
    to.vlan_counters_count = vlans.count;
    for (size_t i = 0; i < vlans.count; ++i) {
        convert(vlans.items[i], to.vlan_counters[i]);
    }
}

bool convert(const peer_VlanStats &from, VlanRecord &to) {
    convert(from.session, to.session);
    convert(from.interface, to.interface);
    zel_vlan_counters *items = allocate_vlans(to, from.vlan_counters_count);
    if (items == nullptr) {
        return false;
    }
    for (size_t i = 0; i < from.vlan_counters_count; ++i) {
        convert(from.vlan_counters[i], items[i]);
    }
    return true;
}

void convert(const ReportRecord &from, peer_GenericReport &to) {
    to.value = from.generic_report.value;
    to.buffer.size = from.generic_report.buffer.count;
    std::memcpy(to.buffer.bytes, from.generic_report.buffer.bytes, to.buffer.size);
}

bool convert(const peer_GenericReport &from, ReportRecord &to) {
    to.generic_report.value = static_cast<uint8_t>(from.value);
    return store_text(to, from.buffer.bytes, from.buffer.size);
}

// The generated structure of a record, and its description.
template <class Record>
struct Generated;
template <>
struct Generated<LedRecord> : std::type_identity<peer_LedControlRequest> {
    static constexpr const pb_msgdesc_t *fields = peer_LedControlRequest_fields;
};
template <>
struct Generated<Dot3Record> : std::type_identity<peer_Dot3StatsUpdate> {
    static constexpr const pb_msgdesc_t *fields = peer_Dot3StatsUpdate_fields;
};
template <>
struct Generated<VlanRecord> : std::type_identity<peer_VlanStats> {
    static constexpr const pb_msgdesc_t *fields = peer_VlanStats_fields;
};
template <>
struct Generated<ReportRecord> : std::type_identity<peer_GenericReport> {
    static constexpr const pb_msgdesc_t *fields = peer_GenericReport_fields;
};

struct Nanopb {
    static constexpr const char *name = "nanopb";

    template <class Record>
    size_t encode(const Record &record, uint8_t *out) {
        auto &message = reused<Record>();
        convert(record, message);
        pb_ostream_t stream = pb_ostream_from_buffer(out, max_encoded);
        return pb_encode(&stream, Generated<Record>::fields, &message) ? stream.bytes_written : 0;
    }

    template <class Record>
    bool decode(const uint8_t *in, size_t size, Record &record) {
        auto &message = reused<Record>();
        pb_istream_t stream = pb_istream_from_buffer(in, size);
        return pb_decode(&stream, Generated<Record>::fields, &message) && convert(message, record);
    }

    // Not on the stack: the bundle's is large.
    template <class Record>
    static auto &reused() {
        static typename Generated<Record>::type message;
        return message;
    }
};

} // namespace

void register_nanopb() { register_peer<Nanopb>(); }

} // namespace tlvmsg_bench
