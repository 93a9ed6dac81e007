//! Notifications of a cellular modem: signal strength, temperature, packet sessions, byte counts, registered
//! network, nearby cells, device management, short messages and GPS.

import "status.tlv"

/// Modem temperature, in two numbers.
struct zel_cwan_gsm_api_temperature_notify = 1486 {
    uint16  value_1
    uint16  value_2
}

/// Packet session state, with the call's end mode and end reason as texts.
struct zel_cwan_gsm_api_pkt_session_notify = 1489 {
    uint8       value_1
    uint8       value_2
    uint8       value_3
    uint16      value_4
    uint16      value_5
    bytes[33]   call_end_mode
    uint32      value_6
    bytes[33]   call_end_reason_type_string
    uint32      value_7
    bytes[257]  call_end_reason_string
    uint8       value_8
}

/// Error codes, with the call's end mode and end reason as texts.
struct zel_cwan_gsm_api_error_codes_msg = 1606 {
    bytes[33]   call_end_mode
    uint32      value_1
    bytes[33]   call_end_reason_type_string
    uint32      value_2
    bytes[257]  call_end_reason_string
    uint8       value_3
    uint8       value_4
    uint32      value_5
    uint32      value_6
}

/// Registered network, with service provider and PLMN names.
struct zel_cwan_gsm_api_regplmn_notify = 1492 {
    uint8      value_1
    uint8      value_2
    uint8      value_3
    bytes[18]  sp_name
    bytes[32]  plmn_name
    bytes[14]  plmn_name_abbr
}

/// System status of the modem; zel_modem_sys_status has the same members.
struct zel_cwan_gsm_api_sys_status_notify = 1494 {
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

/// Information on up to 6 nearby cells.
struct zel_cwan_gsm_api_rscpecio_notify = 1496 {
    /// No codec counts the cells by it.
    uint32                      value
    zel_cw_nearby_cell_info[6]  cell_info
}

/// PLMN readiness.
struct zel_cwan_gsm_api_plmn_readiness_notify = 1497 {
    uint8  readiness
}

/// PLMN selection.
struct zel_cwan_gsm_api_plmn_select_notify = 1498 {
    uint8  selection
}

/// Network, by country code and network code, and the ICCID.
struct zel_cwan_api_network_msg = 1500 {
    uint32     value_1
    uint32     value_2
    uint16     value_3
    uint16     value_4
    uint32     value_5
    uint32     value_6
    uint32     value_7
    bytes[4]   country_code
    bytes[9]   network_code
    uint32     value_8
    uint32     value_9
    bytes[21]  iccid
}

/// Firmware-over-the-air notice of device management, with the package's version, name and description.
struct zel_cwan_api_omadm_fota_notify = 1501 {
    uint8      value_1
    uint8      value_2
    uint8      value_3
    uint16     value_4
    uint16     value_5
    uint16     value_6
    uint16     value_7
    uint32     value_8
    uint32     value_9
    bytes[32]  version
    bytes[32]  package_name
    bytes[32]  description
}

/// Device configuration notice of device management, with an alert text.
struct zel_cwan_api_omadm_devcfg_notify = 1502 {
    uint8      value_1
    uint8      value_2
    uint16     value_3
    uint16     value_4
    bytes[32]  alert_msg as zel_cwan_api_omadm_devcfg_notify_alertmsg_array
}

/// System alert.
struct zel_cwan_gsm_api_sys_alert_notify = 1505 {
    uint8  value_1
    uint8  value_2
}

/// Notice of a received short message.
struct zel_cwan_api_sms_rcvd_notify = 1506 {
    uint32  value_1
    uint32  value_2
}

/// GPS notice.
struct zel_cwan_api_gps_notify = 1507 {
    uint32  value_1
    uint32  value_2
}

/// WDS event.
struct zel_cwan_api_wds_event_info = 1607 {
    uint32  value_1
    uint32  value_2
    uint8   value_3
    uint8   value_4
    uint16  value_5
}

/// SDK state.
struct zel_cwan_api_sdk_state = 1605 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
    uint8   value_5
    uint32  value_6
    uint32  value_7
    uint32  value_8
}

/// Kind of a notification.
enum zel_cwan_msg_notify_type = 1484

/// Body of a notification. One byte stands in for notices without parameters; above 24 there is none.
union zel_cwan_msg_notify_msg_type_union by zel_cwan_msg_notify_type type {
    0, 9, 22: uint8                                   value
           1: zel_cwan_rssi_msg                       rssi_msg
           2: zel_cwan_gsm_api_temperature_notify     temperature_notify
           3: zel_cwan_gsm_api_pkt_session_notify     pkt_session_notify
           4: zel_cwan_gsm_api_bytecount_msg          bytecount_msg
       5, 18: zel_cwan_gsm_api_simstatus_msg          simstatus_msg
           6: zel_cwan_gsm_api_regplmn_notify         regplmn_notify
           7: zel_cwan_api_radio_power_msg            radio_power_msg
           8: zel_cwan_gsm_api_sys_status_notify      sys_status_notify
          10: zel_cwan_gsm_api_rscpecio_notify        rscpecio_notify
          11: zel_cwan_gsm_api_plmn_readiness_notify  plmn_readiness_notify
          12: zel_cwan_gsm_api_plmn_select_notify     plmn_select_notify
          13: zel_cwan_api_network_msg                network_msg
          14: zel_cwan_api_omadm_fota_notify          omadm_fota_notify
          15: zel_cwan_api_omadm_devcfg_notify        omadm_devcfg_notify
          16: zel_cwan_api_sdk_state                  sdk_state
          17: zel_cwan_api_dormancy_status            dormancy_status
          19: zel_cwan_gsm_api_sys_alert_notify       sys_alert_notify
          20: zel_cwan_api_sms_rcvd_notify            sms_rcvd_notify
          21: zel_cwan_api_gps_notify                 gps_notify
          23: zel_cwan_gsm_api_error_codes_msg        error_codes_msg
          24: zel_cwan_api_wds_event_info             wds_event_info
}

/// Modem notification: its kind and its body.
struct zel_cwan_msg_notify_msg = 1508 {
    zel_cwan_msg_notify_type            type
    zel_cwan_msg_notify_msg_type_union  body
}
