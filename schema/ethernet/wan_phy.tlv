//! WAN PHY of a port: mode, alarms and path trace bytes of its WAN interface sublayer (WIS).

import "../common/session.tlv"

/// WAN PHY mode of a port.
struct zel_ether_wanphy_mode = 1135 {
    zel_boolean  mode
}

/// WAN PHY mode to set on a port.
message ether_set_wanphy_mode_message {
    app_sess_hdr           session
    ifid                   interface
    zel_ether_wanphy_mode  wanphy_mode
}

/// Sync mode to set on a port.
message ether_set_sync_mode_message { app_sess_hdr session  ifid interface  zel_boolean flag }

/// Eleven alert flags of the WIS.
struct zel_ether_wis_alerts = 1136 {
    zel_boolean  flag_1
    zel_boolean  flag_2
    zel_boolean  flag_3
    zel_boolean  flag_4
    zel_boolean  flag_5
    zel_boolean  flag_6
    zel_boolean  flag_7
    zel_boolean  flag_8
    zel_boolean  flag_9
    zel_boolean  flag_10
    zel_boolean  flag_11
}

/// BIP statistics of the WIS.
struct zel_ether_wis_bip_stats = 1137 {
    uint16  value_1
    uint32  counter_1
    uint32  counter_2
    uint16  value_2
    uint16  value_3
}

/// Path trace bytes received.
struct zel_ether_wis_rx_ptb = 1138 {
    bytes[16]  ptb_rx
}

/// Path trace bytes transmitted.
struct zel_ether_wis_tx_ptb = 1139 {
    bytes[16]  ptb_tx
}

/// Defects of the WIS: path trace bytes of both directions, BIP statistics, alerts and a flag.
struct zel_ether_wis_defects = 1140 {
    zel_ether_wis_tx_ptb     tx_ptb
    zel_ether_wis_rx_ptb     rx_ptb
    zel_ether_wis_bip_stats  bip_stats
    zel_ether_wis_alerts     alerts
    zel_boolean              flag
}

/// WAN PHY alarms of a port.
message ether_wanphy_alarms_message {
    app_sess_hdr           session
    ifid                   interface
    zel_ether_wis_defects  wis_defects
}

/// WIS alarms of a port.
message ether_wis_alarms_message { app_sess_hdr session  ifid interface  zel_ether_wis_alerts wis_alerts }

/// J1 path trace bytes.
struct zel_ether_wis_ptb = 1141 {
    bytes[16]  j1
}

/// J1 path trace bytes to set on a port.
message ether_wis_set_j1_message { app_sess_hdr session  ifid interface  zel_ether_wis_ptb wis_ptb }
