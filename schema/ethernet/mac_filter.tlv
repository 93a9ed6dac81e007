//! MAC filter and destination MAC address of a port.

import "../common/session.tlv"

/// MAC filter of a port: an interface state and a MAC address.
message ether_mac_filter_message {
    app_sess_hdr  session
    ifid          interface
    if_state      state
    zel_mac_addr  mac_addr
}

/// Destination MAC address to set on a port.
message ether_mac_da_set_message { app_sess_hdr session  ifid interface  zel_mac_addr mac_addr }

/// Address of a port's MAC filter, with an interface state.
message ether_mac_filter_addr_message {
    app_sess_hdr  session
    ifid          interface
    if_state      state
    zel_mac_addr  mac_addr
}

/// MAC address that could not be added to the filter, behind four numbers.
struct zel_ether_mac_filter_addfail = 1483 {
    uint16        value_1
    uint16        value_2
    uint16        value_3
    uint16        value_4
    zel_mac_addr  mac_addr
}

/// Failure to add an address to the MAC filter of a port.
message ether_mac_filter_addfail_msg_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_ether_mac_filter_addfail  mac_filter_addfail
}
