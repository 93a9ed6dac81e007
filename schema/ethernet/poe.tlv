//! Power over Ethernet: commands, events and faults of a port.

import "../common/session.tlv"

/// Power over Ethernet of a port, as a number.
enum kavu_ethernet_poe = 1305

/// Power over Ethernet value of a port.
message zel_kavu_ethernet_poe_message { app_sess_hdr session  ifid interface  kavu_ethernet_poe poe }

/// Type of a Power over Ethernet command.
enum zel_ether_poe_cmdtype = 1611

/// Power over Ethernet command: its type and three numbers.
struct zel_ether_poe_cmd = 1609 {
    zel_ether_poe_cmdtype  type
    uint16                 value_1
    uint16                 value_2
    uint16                 value_3
}

/// Power over Ethernet command for a port.
message ether_poe_cmd_message { app_sess_hdr session  ifid interface  zel_ether_poe_cmd poe_cmd }

/// Type of a Power over Ethernet event.
enum zel_ether_poe_eventtype = 1612

/// Type of a Power over Ethernet fault.
enum zel_ether_poe_faulttype = 1613

/// Power over Ethernet event and fault.
struct zel_ether_poe_report = 1610 {
    zel_ether_poe_eventtype  event
    zel_ether_poe_faulttype  fault
}

/// Power over Ethernet report of a port.
message ether_poe_report_message { app_sess_hdr session  ifid interface  zel_ether_poe_report poe_report }
