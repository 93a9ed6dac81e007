//! MAC accounting of a port: its state, and the counters of each MAC address.

import "../common/session.tlv"
import "interface.tlv"

/// Type of MAC accounting.
enum zel_mac_acct_type = 1150

/// MAC accounting of a port: an interface state and the type of accounting.
message ether_mac_acct_message {
    app_sess_hdr       session
    ifid               interface
    if_state           state
    zel_mac_acct_type  mac_acct_type
}

/// MAC accounting of one address: an interface state and the address.
message ether_mac_acct_addr_message {
    app_sess_hdr  session
    ifid          interface
    if_state      state
    zel_mac_addr  mac_addr
}

/// MAC address and its two counters.
struct mac_acct_stats = 1131 {
    zel_mac_addr   mac_addr
    if_count_long  counter_1
    if_count_long  counter_2
}

/// Counters of several MAC addresses, all under one type of accounting.
struct mac_acct_stats_bundle = 1132 {
    zel_mac_acct_type  type
    uint8              count
    dynamic array      stats of mac_acct_stats counted by uint8
}

/// Update of the statistics of MAC accounting.
message ether_mac_acct_stats_update_message {
    app_sess_hdr           session
    ifid                   interface
    mac_acct_stats_bundle  mac_acct_stats_bundle
}
