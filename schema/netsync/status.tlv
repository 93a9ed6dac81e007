//! BITS alarm, out-of-range and GPS status reports.

import "../common/session.tlv"

/// BITS alarms, as six flags.
struct zel_bits_alarms = 1319 {
    zel_boolean  flag_1
    zel_boolean  flag_2
    zel_boolean  flag_3
    zel_boolean  flag_4
    zel_boolean  flag_5
    zel_boolean  flag_6
}

/// Out-of-range status, as four flags.
struct zel_oor_status = 1320 {
    zel_boolean  flag_1
    zel_boolean  flag_2
    zel_boolean  flag_3
    zel_boolean  flag_4
}

/// GPS link status, as one flag.
struct zel_gps_link_status = 1321 {
    zel_boolean  status
}

/// BITS alarm, out-of-range and GPS link status in one report, one structure behind the other.
message zel_mn_tib_status_message {
    app_sess_hdr         session
    ifid                 interface
    zel_bits_alarms      bits_alarms
    zel_oor_status       oor_status
    zel_gps_link_status  gps_link_status
}

enum zel_netsync_gps_link_state = 1332

/// GPS status. The number alone: on the wire it cannot be told from zel_netsync_gps_link_state.
message zel_netsync_status_gps_message { zel_netsync_gps_link_state gps_link_state }
