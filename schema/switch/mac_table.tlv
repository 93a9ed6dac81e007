//! MAC address table and its aging time.

import "../common/session.tlv"

/// Action of a MAC address table update.
enum mac_action = 1632

/// Update of one MAC address.
struct switch_mac_update = 1633 {
    uint64        value_1
    uint16        value_2
    zel_mac_addr  mac_addr
    uint16        value_3
    mac_action    action
}

/// Updates of the MAC address table in bulk.
struct mac_update_bulk = 1634 {
    /// Separate from the array's count.
    uint32                 value_1
    switch_mac_update[28]  mac_updates
    uint32                 value_2
}

/// Notification of updates of the MAC address table.
message mac_update_notif_message { app_sess_hdr session  ifid interface  mac_update_bulk mac_update_bulk }

/// Aging time of the MAC address table.
enum zel_aging_time = 1621

/// Notification of the aging time.
message mac_age_time_notif_message { app_sess_hdr session  ifid interface  zel_aging_time aging_time }
