//! Power over Ethernet: commands to a port, and what it reports of events and faults.

import "../common/session.tlv"

enum kavu_ethernet_poe = 1305

/// Carries one Power over Ethernet value of a port.
message zel_kavu_ethernet_poe_message { app_sess_hdr session  ifid interface  kavu_ethernet_poe poe }

enum zel_ether_poe_cmdtype = 1611

/// A Power over Ethernet command and its three arguments.
struct zel_ether_poe_cmd = 1609 {
    zel_ether_poe_cmdtype  type
    uint16                 value_1
    uint16                 value_2
    uint16                 value_3
}

/// Gives a Power over Ethernet command to a port.
message ether_poe_cmd_message { app_sess_hdr session  ifid interface  zel_ether_poe_cmd poe_cmd }

enum zel_ether_poe_eventtype = 1612
enum zel_ether_poe_faulttype = 1613

/// A Power over Ethernet event and the fault that goes with it.
struct zel_ether_poe_report = 1610 {
    zel_ether_poe_eventtype  event
    zel_ether_poe_faulttype  fault
}

/// Reports a Power over Ethernet event of a port.
message ether_poe_report_message { app_sess_hdr session  ifid interface  zel_ether_poe_report poe_report }
