//! Ethernet switch module: what the control plane and the module's driver tell each other about its ports,
//! beginning with the MAC address table and its aging time.

import "../common/session.tlv"

enum mac_action = 1632

/// One change of the table.
struct switch_mac_update = 1633 {
    uint64        value_1
    uint16        value_2
    zel_mac_addr  mac_addr
    uint16        value_3
    mac_action    action
}

array mac_update_bulk_mac_updates_array of switch_mac_update[28]

/// Up to 28 changes of the table.
struct mac_update_bulk = 1634 {
    uint32                             value_1
    mac_update_bulk_mac_updates_array  mac_updates
    uint32                             value_2
}

/// Notifies of changes of the MAC address table.
message mac_update_notif_message { app_sess_hdr session  ifid interface  mac_update_bulk mac_update_bulk }

enum zel_aging_time = 1621

/// Notifies of the aging time.
message mac_age_time_notif_message { app_sess_hdr session  ifid interface  zel_aging_time aging_time }
