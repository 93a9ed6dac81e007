//! Statistics of a whole SecY with those of its receive channels.

import "../common/session.tlv"
import "identifiers.tlv"

/// Counters of one receive channel.
struct zel_rx_sc_counters = 1666 {
    uint64  counter_1
    uint64  counter_2
    uint64  counter_3
    uint64  counter_4
    uint64  counter_5
    uint64  counter_6
    uint64  counter_7
    uint64  counter_8
    uint16  value
    uint64  counter_9
    uint64  counter_10
    uint64  counter_11
    uint64  counter_12
    uint64  counter_13
    uint64  counter_14
    uint64  counter_15
}

dynamic array macsec_rx_sc_stat_bundle_half_rx_sc_counters_array of zel_rx_sc_counters counted by uint8

/// One half of the receive channels' counters.
struct macsec_rx_sc_stat_bundle_half = 1729 {
    uint8                                               count
    macsec_rx_sc_stat_bundle_half_rx_sc_counters_array  rx_sc_counters
}

dynamic array macsec_rx_sc_stat_bundle_rx_sc_counters_array of zel_rx_sc_counters counted by uint8

/// Counters of up to 255 receive channels.
struct macsec_rx_sc_stat_bundle = 1667 {
    uint8                                          count
    macsec_rx_sc_stat_bundle_rx_sc_counters_array  rx_sc_counters
}

/// Counters of a SecY as a whole.
struct macsec_global_secy_stats = 1668 {
    uint64  counter_1
    uint64  counter_2
    uint64  counter_3
    uint64  counter_4
    uint64  counter_5
    uint64  counter_6
    uint64  counter_7
    uint64  counter_8
    uint64  counter_9
    uint64  counter_10
    uint64  counter_11
    uint64  counter_12
    uint64  counter_13
    uint64  counter_14
    uint64  counter_15
    uint64  counter_16
    uint64  counter_17
    uint64  counter_18
    uint64  counter_19
    uint64  counter_20
    uint64  counter_21
    uint64  counter_22
    uint16  value
    uint64  counter_23
    uint64  counter_24
}

/// Carries the counters of a SecY and one half of its receive channels'.
message macsec_global_secy_stats_msg1_message {
    app_sess_hdr                   session
    ifid                           interface
    macsec_secy_vport              secy_vport
    macsec_global_secy_stats       global_secy_stats
    macsec_rx_sc_stat_bundle_half  rx_sc_stat_bundle_half
}

/// Carries only one half of the receive channels' counters.
message macsec_global_secy_stats_msg2_message {
    app_sess_hdr                   session
    ifid                           interface
    macsec_secy_vport              secy_vport
    macsec_rx_sc_stat_bundle_half  rx_sc_stat_bundle_half
}

/// Carries the counters of a SecY and those of all its receive channels.
message macsec_global_secy_stats_msg_message {
    app_sess_hdr              session
    ifid                      interface
    macsec_secy_vport         secy_vport
    macsec_global_secy_stats  global_secy_stats
    macsec_rx_sc_stat_bundle  rx_sc_stat_bundle
}

/// Clears the counters of a SecY.
message macsec_global_secy_stats_clear_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_secy_vport  secy_vport
}
