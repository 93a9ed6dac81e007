//! NMEA (GPS) and diagnostic-port data of a cellular card, and control of its diagnostic logging.

import "../common/session.tlv"

/// Kind of the data that follows the header.
enum zel_nmea_dm_encap_type = 1597

/// Encapsulation header in front of NMEA or diagnostic data.
struct zel_nmea_dm_encap_hdr = 1598 {
    zel_nmea_dm_encap_type  type
}

/// NMEA or diagnostic data, up to 1000 bytes.
bytes nmea_dm_msg_msg_array[1000]

/// One block of NMEA or diagnostic data.
struct nmea_dm_msg = 1599 {
    zel_nmea_dm_encap_hdr  encap_hdr
    uint32                 value
    nmea_dm_msg_msg_array  data
}

/// Diagnostic logging configuration.
struct zel_cwan_dm_local_config = 1644 {
    uint8   value_1
    uint8   value_2
    uint8   value_3
    uint32  value_4
    uint32  value_5
}

/// Diagnostic stop data, up to 1000 bytes.
bytes zel_cwan_dm_stop_msg_array[1000]

/// Diagnostic logging stop record.
struct zel_cwan_dm_stop = 1645 {
    uint32                      value
    zel_cwan_dm_stop_msg_array  msg
}

/// NMEA or diagnostic data of one cellular interface.
message nmea_dm_message { app_sess_hdr session  ifid interface  nmea_dm_msg nmea_dm }
