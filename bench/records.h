// The four messages that stand for the rest, with the records that everything is measured on: a small fixed
// one, a larger fixed one, a dynamic array of 64 structures, and a text.
#pragma once

#include <tlvmsg/ethernet.h>
#include <tlvmsg/runtime.h>
#include <tlvmsg/voice.h>

#include <cstddef>
#include <cstdint>

namespace tlvmsg_bench {

// A message type with its exact operations, as a program links them.
template <class Record, auto Size, auto Encode, auto Decode>
struct Row {
    using record = Record;

    static uint16_t size(const Record *in) { return Size(in); }
    static uint8_t *encode(const Record *in, uint8_t *out) { return Encode(in, out); }
    static const uint8_t *decode(const uint8_t *in, Record *out) { return Decode(in, out); }

    const char *name;
    const char *type_name;
    Record values;
};

#define BENCH_ROW(TYPE) Row<TYPE, get_tlv_##TYPE##_size, encode_tlv_##TYPE, decode_tlv_##TYPE>
using LedControl = BENCH_ROW(analogbri_led_control_req_message);
using Dot3Stats = BENCH_ROW(ether_dot3_stats_update_message);
using VlanStats = BENCH_ROW(zel_tib_vlan_stats_message);
using GenericReport = BENCH_ROW(zel_kavu_ethernet_generic_report_message);
#undef BENCH_ROW

inline constexpr size_t vlan_count = 64;
inline constexpr size_t report_length = 1500;

// Their numbers are random, use their full width, and are the same in every run.
const LedControl &led_control();
const Dot3Stats &dot3_stats();
const VlanStats &vlan_stats();
const GenericReport &generic_report();

template <class Visit>
void for_each_row(const Visit &visit) {
    visit(led_control());
    visit(dot3_stats());
    visit(vlan_stats());
    visit(generic_report());
}

// How many bytes a decoder allocates for the record.
template <class Record>
constexpr size_t block_size(const Record &) {
    return 0;
}
inline size_t block_size(const zel_tib_vlan_stats_message &record) {
    return record.vlan_stat_bundle.vlan_counters.count * sizeof(zel_vlan_counters);
}

// The characters of a record that consists of little else.
struct Text {
    uint8_t *bytes;
    size_t length;
    size_t capacity;
};
inline Text text_of(zel_kavu_ethernet_generic_report_message &record) {
    auto &buffer = record.generic_report.buffer;
    return {buffer.bytes, buffer.count, sizeof buffer.bytes};
}

// Releases the block of a decoded record.
template <class Record>
void release(const Record &) {}
inline void release(const zel_tib_vlan_stats_message &record) {
    tlv_free(record.vlan_stat_bundle.vlan_counters.items);
}

} // namespace tlvmsg_bench
