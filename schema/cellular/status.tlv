//! Radio, SIM, session and cell records that more than one kind of exchange carries.

/// Signal strength, as a notification and as a response.
struct zel_cwan_rssi_msg = 1485 {
    uint16  value_1
    uint16  value_2
    uint32  value_3
    uint16  value_4
    uint8   value_5
}

/// Byte counts, as a notification and as a response.
struct zel_cwan_gsm_api_bytecount_msg = 1490 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
}

/// SIM status, as two kinds of notification and as a response.
struct zel_cwan_gsm_api_simstatus_msg = 1491 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
    uint16  value_6
    uint8   value_7
    uint8   value_8
}

/// Radio power, as a notification and as a set response.
struct zel_cwan_api_radio_power_msg = 1493 {
    uint16  value_1
    uint16  value_2
}

/// System mode; lists of up to 7 are the system capabilities of a modem.
enum zel_cw_system_mode = 1602

/// Information on one nearby cell.
struct zel_cw_nearby_cell_info = 1495 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
}

/// Dormancy, as a notification and as a get response.
struct zel_cwan_api_dormancy_status = 1504 {
    uint32  value_1
    uint32  value_2
}
