//! Responses of a cellular modem to get requests.

import "modem.tlv"
import "profile.tlv"
import "status.tlv"

/// RF information. Responses carry it, notifications do not.
struct zel_cwan_rf_info = 1499 {
    uint8   value_1
    uint32  value_2
    uint32  value_3
}

/// Summary of the profiles, in nine numbers.
struct zel_cwan_gsm_api_profile_sum_get_resp = 1525 {
    uint8  value_1
    uint8  value_2
    uint8  value_3
    uint8  value_4
    uint8  value_5
    uint8  value_6
    uint8  value_7
    uint8  value_8
    uint8  value_9
}

/// PRI information: model, boot and application versions, package and carrier.
struct zel_cwan_gsm_api_pri_info_get_resp = 1526 {
    bytes[21]  model_id as zel_cwan_gsm_api_pri_info_get_resp_modelid_array
    bytes[86]  boot_version as zel_cwan_gsm_api_pri_info_get_resp_bootversion_array
    bytes[86]  app_version as zel_cwan_gsm_api_pri_info_get_resp_appversion_array
    bytes[16]  sku
    bytes[86]  package_id as zel_cwan_gsm_api_pri_info_get_resp_packageid_array
    bytes[21]  carrier
    bytes[11]  pri_version as zel_cwan_gsm_api_pri_info_get_resp_priversion_array
}

/// PDP address of a profile.
struct zel_cwan_gsm_api_profile_ip_addr_get_resp = 1527 {
    uint16     value_1
    uint16     value_2
    uint8      value_3
    uint8      value_4
    bytes[17]  pdp_address
}

/// MSISDN, and a number.
struct zel_cwan_gsm_api_msisdn_get_resp = 1528 {
    bytes[161]  msisdn
    uint16      value
}

/// PLMN mode.
struct zel_cwan_gsm_api_plmn_mode_get_resp = 1529 {
    uint8  mode
}

/// Network of the network list, with service provider and PLMN names.
struct zel_cwan_gsm_api_plmn_list_get_resp = 1530 {
    uint8      value_1
    uint8      value_2
    bytes[18]  sp_name
    uint8      value_3
    bytes[32]  plmn_name
    uint8      value_4
    bytes[14]  plmn_name_abbr
    uint16     value_5
    uint16     value_6
    uint8      value_7
    uint8      value_8
}

/// Connection rate, in four numbers.
struct zel_cwan_gsm_api_conn_rate_get_resp = 1531 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
}

/// Device management settings.
struct zel_cwan_api_omadm_settings_msg = 1532 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
}

/// Signal strength; zel_cwan_rssi_msg is the shorter form.
struct zel_cwan_gsm_api_signal_strength_msg = 1533 {
    uint16  value_1
    uint8   value_2
    uint32  value_3
    uint32  value_4
    uint32  value_5
    uint16  value_6
    uint8   value_7
    uint8   value_8
    uint8   value_9
    uint8   value_10
}

/// Network system information, with network code and LTE network name.
struct zel_cwan_api_network_system_info = 1535 {
    uint16     value_1
    uint16     value_2
    uint16     value_3
    uint8      value_4
    uint32     value_5
    bytes[9]   network_code
    uint16     value_6
    uint16     value_7
    uint16     value_8
    uint16     value_9
    uint16     value_10
    uint16     value_11
    uint16     value_12
    uint16     value_13
    uint16     value_14
    bytes[25]  network_name_lte
}

/// Session information.
struct zel_cwan_api_session_info_get_resp = 1536 {
    uint64  value_1
    uint32  value_2
    uint64  value_3
    uint32  value_4
}

/// Band capability of the modem.
struct zel_cwan_gsm_api_band_capability_msg = 1537 {
    uint64  capability
}

/// System selection preference.
struct zel_cwan_api_system_selection_pref_info = 1538 {
    uint8   value_1
    uint8   value_2
    uint32  value_3
    uint64  value_4
    uint64  value_5
}

/// Short message, which a response and a set request carry.
struct zel_cwan_gsm_api_sms_msg_info = 1539 {
    uint32      value_1
    uint32      value_2
    uint8       value_3
    bytes[16]   sender_address
    uint8       value_4
    bytes[16]   receiver_address
    uint8       value_5
    bytes[160]  text_message
    bytes[9]    time_stamp
    uint8       value_6
    bytes[9]    date_stamp
}

/// GPS port of the modem.
enum zel_cwan_api_gps_port_get_resp = 1540

/// Kind of a get response.
enum zel_cwan_msg_get_resp_type = 1515

/// Body of a get response. One byte stands in for responses without a record; above 32 there is none.
union zel_cwan_msg_get_resp_msg_type_union by zel_cwan_msg_get_resp_type type {
    0, 11: zel_cwan_gsm_api_modem_info_msg            modem_info_msg
        1: zel_cwan_rssi_msg                          rssi_msg
        2: zel_cwan_gsm_api_profile_msg               profile_msg
        3: zel_cwan_gsm_api_profile_sum_get_resp      profile_sum_get_resp
        4: zel_cwan_gsm_api_pri_info_get_resp         pri_info_get_resp
        5: zel_cwan_rf_info                           rf_info
        6: zel_cwan_gsm_api_profile_ip_addr_get_resp  profile_ip_addr_get_resp
        7: zel_cwan_gsm_api_msisdn_get_resp           msisdn_get_resp
        8: zel_cwan_gsm_api_plmn_mode_get_resp        plmn_mode_get_resp
        9: zel_cwan_gsm_api_plmn_list_get_resp        plmn_list_get_resp
       10: zel_cwan_gsm_api_simstatus_msg             simstatus_msg
       12: zel_cwan_gsm_api_bytecount_msg             bytecount_msg
       13: zel_cwan_gsm_api_conn_rate_get_resp        conn_rate_get_resp
       14: zel_cwan_api_omadm_settings_msg            omadm_settings_msg
       15: zel_cwan_api_dormancy_status               dormancy_status
       16: zel_cwan_gsm_api_signal_strength_msg       signal_strength_msg
       17: zel_cwan_gsm_api_modem_current_status_msg  modem_current_status_msg
       18: zel_cwan_api_network_system_info           network_system_info
       19: zel_cwan_api_session_info_get_resp         session_info_get_resp
    20, 23, 24, 26, 27, 28, 29, 30, 31: uint8  value
       21: zel_cwan_gsm_api_band_capability_msg       band_capability_msg
       22: zel_cwan_api_system_selection_pref_info    system_selection_pref_info
       25: zel_cwan_gsm_api_sms_msg_info              sms_msg_info
       32: zel_cwan_api_gps_port_get_resp             gps_port_get_resp
}

/// Get response: its kind and its body.
struct zel_cwan_msg_get_resp_msg = 1541 {
    zel_cwan_msg_get_resp_type            type
    zel_cwan_msg_get_resp_msg_type_union  body
}
