//! NMEA (GPS) and diagnostic-port data of a cellular card, and its diagnostic logging.

import "../common/session.tlv"

/// Type of an encapsulation of NMEA or diagnostic data.
enum zel_nmea_dm_encap_type = 1597

/// Encapsulation header before NMEA or diagnostic data.
struct zel_nmea_dm_encap_hdr = 1598 {
    zel_nmea_dm_encap_type  type
}

/// Block of NMEA or diagnostic data, up to 1,000 bytes.
struct nmea_dm_msg = 1599 {
    zel_nmea_dm_encap_hdr  encap_hdr
    /// No codec counts the data by it.
    uint32                 value
    bytes[1000]            data as nmea_dm_msg_msg_array
}

/// Configuration of diagnostic logging.
struct zel_cwan_dm_local_config = 1644 {
    uint8   value_1
    uint8   value_2
    uint8   value_3
    uint32  value_4
    uint32  value_5
}

/// Stop record of diagnostic logging, up to 1,000 bytes.
struct zel_cwan_dm_stop = 1645 {
    /// No codec counts the bytes by it.
    uint32       value
    bytes[1000]  msg
}

/// Message with NMEA or diagnostic data.
message nmea_dm_message { app_sess_hdr session  ifid interface  nmea_dm_msg nmea_dm }
