//! Accounting by MAC address: switching it, choosing addresses and reading the counters.

import "../common/session.tlv"
import "interface.tlv"

enum zel_mac_acct_type = 1150

/// Carries the state of MAC accounting of one type.
message ether_mac_acct_message {
    app_sess_hdr       session
    ifid               interface
    if_state           state
    zel_mac_acct_type  mac_acct_type
}

/// Carries the state of MAC accounting for one address.
message ether_mac_acct_addr_message {
    app_sess_hdr  session
    ifid          interface
    if_state      state
    zel_mac_addr  mac_addr
}

/// The two counters kept for one MAC address.
struct mac_acct_stats = 1131 {
    zel_mac_addr   mac_addr
    if_count_long  counter_1
    if_count_long  counter_2
}

dynamic array mac_acct_stats_bundle_stats_array of mac_acct_stats counted by uint8

/// Counters of up to 255 MAC addresses, all under one accounting type.
struct mac_acct_stats_bundle = 1132 {
    zel_mac_acct_type                  type
    uint8                              count
    mac_acct_stats_bundle_stats_array  stats
}

/// Updates the counters of a bundle of MAC addresses.
message ether_mac_acct_stats_update_message {
    app_sess_hdr           session
    ifid                   interface
    mac_acct_stats_bundle  mac_acct_stats_bundle
}
