//! Destination address and MAC address filter of a port.

import "../common/session.tlv"

/// Carries the state of a filter and the MAC address that it is for.
message ether_mac_filter_message {
    app_sess_hdr  session
    ifid          interface
    if_state      state
    zel_mac_addr  mac_addr
}

/// Sets the destination MAC address of a port.
message ether_mac_da_set_message { app_sess_hdr session  ifid interface  zel_mac_addr mac_addr }

/// Carries the state of one MAC address of the filter.
message ether_mac_filter_addr_message {
    app_sess_hdr  session
    ifid          interface
    if_state      state
    zel_mac_addr  mac_addr
}

/// An address that could not be added to the filter, with four numbers that go with the failure.
struct zel_ether_mac_filter_addfail = 1483 {
    uint16        value_1
    uint16        value_2
    uint16        value_3
    uint16        value_4
    zel_mac_addr  mac_addr
}

/// Tells that adding an address to the filter failed.
message ether_mac_filter_addfail_msg_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_ether_mac_filter_addfail  mac_filter_addfail
}
