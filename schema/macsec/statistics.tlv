//! Statistics of SCs, SAs and ports.

import "../common/session.tlv"
import "identifiers.tlv"

enum macsec_port_stats = 1664  // tlvc: W003 because nothing tells what it is for

/// Two numbers of a request for receive statistics.
struct macsec_get_rx_stats = 1665 {
    macsec_port_stats  port_stats
    uint16             value
}

/// Request for the receive statistics of an SC.
message macsec_get_rx_stats_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_get_rx_stats  request
    macsec_sci           sci
}

/// Eight counters of a receive SC.
struct macsec_rx_sc_stats = 1684 {
    uint64  counter_1
    uint64  counter_2
    uint64  counter_3
    uint64  counter_4
    uint64  counter_5
    uint64  counter_6
    uint64  counter_7
    uint64  counter_8
}

/// Statistics of a receive SC.
message macsec_rx_sc_stats_msg_message {
    app_sess_hdr        session
    ifid                interface
    macsec_rx_sc_stats  rx_sc_stats
    macsec_sci          sci
}

/// Five counters of a receive SA, behind a number.
struct macsec_rx_sa_stats = 1685 {
    uint16  value
    uint64  counter_1
    uint64  counter_2
    uint64  counter_3
    uint64  counter_4
    uint64  counter_5
}

/// Statistics of a receive SA, given by its SC.
message macsec_rx_sa_stats_msg_message {
    app_sess_hdr        session
    ifid                interface
    macsec_rx_sa_stats  rx_sa_stats
    macsec_sci          sci
}

/// Two counters of a transmit SC.
struct macsec_tx_sc_stats = 1686 {
    uint64  counter_1
    uint64  counter_2
}

/// Statistics of a transmit SC.
message macsec_tx_sc_stats_msg_message {
    app_sess_hdr        session
    ifid                interface
    macsec_tx_sc_stats  tx_sc_stats
}

/// Two counters of a transmit SA.
struct macsec_tx_sa_stats = 1687 {
    uint64  counter_1
    uint64  counter_2
}

/// Statistics of a transmit SA.
message macsec_tx_sa_stats_msg_message {
    app_sess_hdr        session
    ifid                interface
    macsec_tx_sa_stats  tx_sa_stats
}

/// Nineteen counters of a port.
struct macsec_port_level_stats = 1688 {
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
}

/// Statistics of a port.
message macsec_port_level_stats_msg_message {
    app_sess_hdr             session
    ifid                     interface
    macsec_port_level_stats  port_level_stats
}
