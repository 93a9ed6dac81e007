#include "records.h"

#include "support/random_record.h"

#include <tlvmsg/types.h>

#include <random>

namespace tlvmsg_bench {

namespace {

void fill_numbers(const char *type_name, void *record) {
    tlvmsg_test::RandomRecord random(1, tlvmsg_test::Counts::Zero, 0);
    random.fill(*tlvmsg_type_find(type_name), static_cast<uint8_t *>(record));
}

template <class AnyRow>
AnyRow make_row(const char *name, const char *type_name) {
    AnyRow row{name, type_name, {}};
    fill_numbers(type_name, &row.values);
    return row;
}

VlanStats make_vlan_stats() {
    static zel_vlan_counters counters[vlan_count];
    tlvmsg_test::RandomRecord random(2, tlvmsg_test::Counts::Random, 0);
    for (zel_vlan_counters &each : counters) {
        random.fill(*tlvmsg_type_find("zel_vlan_counters"), reinterpret_cast<uint8_t *>(&each));
    }
    VlanStats row{"vlan_stats", "zel_tib_vlan_stats_message", {}};
    fill_numbers("app_sess_hdr", &row.values.session);
    fill_numbers("ifid", &row.values.interface);
    row.values.vlan_stat_bundle.vlan_counters = {vlan_count, counters};
    return row;
}

GenericReport make_generic_report() {
    auto row = make_row<GenericReport>("generic_report", "zel_kavu_ethernet_generic_report_message");
    auto &buffer = row.values.generic_report.buffer;
    std::minstd_rand random(3);
    buffer.count = report_length;
    for (size_t i = 0; i < report_length; ++i) {
        buffer.bytes[i] = static_cast<uint8_t>(' ' + random() % ('~' - ' '));
    }
    return row;
}

} // namespace

const LedControl &led_control() {
    static const auto row = make_row<LedControl>("led_control", "analogbri_led_control_req_message");
    return row;
}

const Dot3Stats &dot3_stats() {
    static const auto row = make_row<Dot3Stats>("dot3_stats", "ether_dot3_stats_update_message");
    return row;
}

const VlanStats &vlan_stats() {
    static const VlanStats row = make_vlan_stats();
    return row;
}

const GenericReport &generic_report() {
    static const GenericReport row = make_generic_report();
    return row;
}

} // namespace tlvmsg_bench
