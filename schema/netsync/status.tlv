//! Status of BITS, out-of-range detection and GPS.

import "../common/session.tlv"

/// BITS alarms, six flags.
struct zel_bits_alarms = 1319 {
    zel_boolean  flag_1
    zel_boolean  flag_2
    zel_boolean  flag_3
    zel_boolean  flag_4
    zel_boolean  flag_5
    zel_boolean  flag_6
}

/// Out-of-range status, four flags.
struct zel_oor_status = 1320 {
    zel_boolean  flag_1
    zel_boolean  flag_2
    zel_boolean  flag_3
    zel_boolean  flag_4
}

/// GPS link status.
struct zel_gps_link_status = 1321 {
    zel_boolean  status
}

/// Report of BITS alarms, out-of-range and GPS link status.
message zel_mn_tib_status_message {
    app_sess_hdr         session
    ifid                 interface
    zel_bits_alarms      bits_alarms
    zel_oor_status       oor_status
    zel_gps_link_status  gps_link_status
}

/// State of the GPS link.
enum zel_netsync_gps_link_state = 1332

/// Status of GPS; the same bytes as its one member.
message zel_netsync_status_gps_message { zel_netsync_gps_link_state gps_link_state }
