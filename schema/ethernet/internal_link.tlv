//! Internal link of a port: state and statistics.

import "../common/session.tlv"
import "interface.tlv"

/// Cstate of the internal link, as an interface state.
message ether_internal_cstate_msg_message { app_sess_hdr session  ifid interface  if_state state }

/// Link state of the internal link.
message ether_internal_link_state_message { app_sess_hdr session  ifid interface  if_state state }

/// Five 64-bit counters of the internal link.
struct zel_ether_internal_stats = 1263 {
    if_count_long  counter_1
    if_count_long  counter_2
    if_count_long  counter_3
    if_count_long  counter_4
    if_count_long  counter_5
}

/// Statistics of the internal link.
message ether_internal_stats_message {
    app_sess_hdr              session
    ifid                      interface
    zel_ether_internal_stats  internal_stats
}
