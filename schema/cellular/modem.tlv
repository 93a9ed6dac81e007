//! What a cellular modem says about itself: identity and versions, system status, and its current status with
//! the ports it offers.

import "status.tlv"

/// IMSI, and a number.
struct zel_cwan_api_imsi = 1516 {
    bytes[21]  imsi
    uint16     value
}

/// System status within the modem information. zel_cwan_gsm_api_sys_status_notify has the same members.
struct zel_modem_sys_status = 1517 {
    uint32                 value_1
    uint32                 value_2
    uint32                 value_3
    uint32                 value_4
    uint32                 value_5
    uint32                 value_6
    uint8                  value_7
    uint8                  value_8
    uint8                  value_9
    uint8                  value_10
    bytes[4]               country_code
    uint32                 value_11
    uint32                 value_12
    uint32                 value_13
    uint32                 value_14
    uint32                 value_15
    uint32                 value_16
    uint32                 value_17
    uint32                 value_18
    uint32                 value_19
    uint32                 value_20
    uint32                 value_21
    uint32                 value_22
    uint32                 value_23
    uint32                 value_24
    uint32                 value_25
    uint32                 value_26
    uint32                 value_27
    zel_cw_system_mode[7]  system_capabilities
    uint8                  value_28
    bytes[9]               network_code
}

/// Versions, identities, capabilities and nearby cells of the modem.
struct zel_cwan_gsm_api_modem_info_msg = 1518 {
    bytes[25]                   firmware_version
    bytes[21]                   firmware_date
    bytes[21]                   hardware_version
    zel_cwan_api_imsi           imsi
    bytes[21]                   fsn
    uint32                      value_1
    uint32                      value_2
    uint32                      value_3
    uint32                      value_4
    zel_modem_sys_status        sys_status
    uint32                      value_5
    bytes[38]                   gsm_bands_list as zel_cwan_gsm_api_modem_info_msg_cw_gsm_bands_list_array
    uint32                      value_6
    bytes[21]                   imei
    uint16                      value_7
    uint16                      value_8
    uint8                       value_9
    bytes[14]                   lte_tech_list as zel_cwan_gsm_api_modem_info_msg_cw_lte_tech_list_array
    uint32                      value_10
    bytes[21]                   iccid
    bytes[21]                   sdk_version
    zel_cw_nearby_cell_info[6]  cell_info
    bytes[21]                   pri_id
    bytes[21]                   pri_version
}

/// Callback statistics, a part of the current status.
struct zel_cwan_callback_stats = 1603 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
    uint32  counter_10
    uint32  counter_11
    uint32  counter_12
    uint32  counter_13
    uint32  counter_14
    uint32  counter_15
    uint32  counter_16
    uint32  counter_17
    uint32  counter_18
    uint32  counter_19
    uint32  counter_20
    uint32  counter_21
    uint32  counter_22
    uint32  counter_23
    uint32  counter_24
    uint32  counter_25
    uint32  counter_26
    uint32  counter_27
    uint32  counter_28
    uint32  counter_29
    uint32  counter_30
    uint32  counter_31
    uint32  counter_32
    uint32  counter_33
    uint32  counter_34
    uint32  counter_35
    uint32  counter_36
    uint32  counter_37
    uint32  counter_38
    uint32  counter_39
}

/// Current status of the modem: ports, capabilities, USB versions and callback statistics.
struct zel_cwan_gsm_api_modem_current_status_msg = 1534 {
    uint8                    value_1
    uint8                    value_2
    uint8                    value_3
    uint8                    value_4
    uint8                    value_5
    uint8                    value_6
    uint8                    value_7
    uint8                    value_8
    uint16                   value_9
    uint16                   value_10
    bytes[40]                at_cmd_port as zel_cwan_gsm_api_modem_current_status_msg_ATCmdPort_array
    bytes[40]                nmea_port as zel_cwan_gsm_api_modem_current_status_msg_NmeaPort_array
    uint16                   value_11
    uint8                    value_12
    zel_cw_system_mode[7]    system_capabilities as zel_cwan_gsm_api_modem_current_status_msg_systemCapabilities_array
    uint8                    value_13
    bytes[33]                usb_serial_version
    zel_cwan_callback_stats  callback_stats
    bytes[33]                usb_net_version
    bytes[40]                dm_port as zel_cwan_gsm_api_modem_current_status_msg_DmPort_array
}
