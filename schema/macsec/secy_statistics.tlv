//! Statistics of a SecY as a whole, and counters of its receive SCs.

import "../common/session.tlv"
import "identifiers.tlv"

/// Counters of one receive SC.
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

/// Half bundle of receive SC counters.
struct macsec_rx_sc_stat_bundle_half = 1729 {
    uint8          count
    dynamic array  rx_sc_counters of zel_rx_sc_counters counted by uint8
}

/// Full bundle of receive SC counters.
struct macsec_rx_sc_stat_bundle = 1667 {
    uint8          count
    dynamic array  rx_sc_counters of zel_rx_sc_counters counted by uint8
}

/// Global statistics of a SecY.
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

/// Statistics of a SecY: the global ones, and a half bundle of its receive SCs.
message macsec_global_secy_stats_msg1_message {
    app_sess_hdr                   session
    ifid                           interface
    macsec_secy_vport              secy_vport
    macsec_global_secy_stats       global_secy_stats
    macsec_rx_sc_stat_bundle_half  rx_sc_stat_bundle_half
}

/// Statistics of a SecY: only a half bundle of its receive SCs.
message macsec_global_secy_stats_msg2_message {
    app_sess_hdr                   session
    ifid                           interface
    macsec_secy_vport              secy_vport
    macsec_rx_sc_stat_bundle_half  rx_sc_stat_bundle_half
}

/// Statistics of a SecY: the global ones, and a full bundle of its receive SCs.
message macsec_global_secy_stats_msg_message {
    app_sess_hdr              session
    ifid                      interface
    macsec_secy_vport         secy_vport
    macsec_global_secy_stats  global_secy_stats
    macsec_rx_sc_stat_bundle  rx_sc_stat_bundle
}

/// Request to clear the global statistics of a SecY.
message macsec_global_secy_stats_clear_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_secy_vport  secy_vport
}
