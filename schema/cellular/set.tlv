//! Set requests to a cellular modem. PIN, PUK and CHV codes are bytes like any others to the codecs.

import "get_response.tlv"
import "profile.tlv"

/// Notifications to enable.
enum zel_cwan_gsm_api_enable_notification_set = 1543

/// Bands to use.
enum zel_cwan_gsm_api_band_set = 1544

/// Network to select.
struct zel_cwan_gsm_api_plmn_select_set = 1545 {
    uint8   value_1
    uint16  value_2
    uint16  value_3
}

/// PRL region to use.
struct zel_cwan_gsm_api_prl_region_set = 1546 {
    uint8  region
}

/// PIN of up to 12 bytes, to unlock a modem.
struct zel_cwan_gsm_api_mep_unlock_set = 1547 {
    /// No codec counts the PIN's bytes by it.
    uint8      value
    bytes[12]  pin
}

/// CHV1 to verify, and PUK, up to 9 bytes each.
struct zel_cwan_gsm_api_verify_chv1_set = 1548 {
    uint8     value_1
    uint8     value_2
    bytes[9]  chv1
    uint8     value_3
    bytes[9]  puk
}

/// CHV1 to enable, up to 9 bytes.
struct zel_cwan_gsm_api_enable_chv1_set = 1549 {
    uint8     value_1
    uint8     value_2
    bytes[9]  chv1
}

/// Old CHV and the new one to replace it, up to 9 bytes each.
struct zel_cwan_gsm_api_change_chv12_set = 1550 {
    uint8     value_1
    uint8     value_2
    bytes[9]  old_chv
    uint8     value_3
    bytes[9]  new_chv
}

/// Profile to activate.
struct zel_cwan_gsm_api_activate_profile_set = 1551 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
}

/// State of the host's software.
struct zel_cwan_gsm_api_host_sw_state_set = 1552 {
    uint16  state
}

/// LTE technology to use.
enum zel_cwan_gsm_api_lte_tech_set = 1553

/// Start of device management.
enum zel_cwan_gsm_api_omadm_start = 1554

/// Activation mode of device management.
struct zel_cwan_api_omadm_activate_mode_set = 1555 {
    uint32  value_1
    uint32  value_2
}

/// Response that is selected for device management.
enum zel_cwan_api_omadm_resp_select = 1556

/// Link recovery settings.
struct zel_cwan_gsm_api_set_link_recovery = 1557 {
    uint8  value_1
    uint8  value_2
    uint8  value_3
    uint8  value_4
    uint8  value_5
    uint8  value_6
}

/// Active profiles.
struct zel_cwan_gsm_api_set_active_profiles = 1558 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
}

/// Parameter of deleting a received short message.
struct zel_cwan_gsm_api_sms_delete_rcvd_msg_set = 1559 {
    uint8  value
}

/// Parameter of managing the status of short messages.
enum zel_cwan_gsm_api_sms_manage_status_set = 1560

/// GPS setting.
enum zel_cwan_api_gps_set = 1561

/// GPS port to select.
enum zel_cwan_api_gps_port_select = 1562

/// Configuration of the GPS feature.
enum zel_cwan_api_gps_feature_config = 1563

/// System time, as a set request carries it.
enum zel_cwan_api_system_time = 1604

/// Kind of a set request.
enum zel_cwan_msg_set_type = 1542

/// Parameters of a set request. One byte stands in for kinds that have none; above 29 nothing is carried.
union zel_cwan_msg_set_msg_type_union by zel_cwan_msg_set_type type {
     0: zel_cwan_gsm_api_enable_notification_set  enable_notification_set
    1, 7, 23, 25, 26, 29: uint8  value
     2: zel_cwan_gsm_api_band_set                 band_set
     3: zel_cwan_gsm_api_plmn_select_set          plmn_select_set
     4: zel_cwan_gsm_api_profile_msg              profile_msg
     5: zel_cwan_gsm_api_prl_region_set           prl_region_set
     6: zel_cwan_gsm_api_mep_unlock_set           mep_unlock_set
     8: zel_cwan_gsm_api_verify_chv1_set          verify_chv1_set
     9: zel_cwan_gsm_api_enable_chv1_set          enable_chv1_set
    10: zel_cwan_gsm_api_change_chv12_set         change_chv12_set
    11: zel_cwan_gsm_api_activate_profile_set     activate_profile_set
    12: zel_cwan_gsm_api_host_sw_state_set        host_sw_state_set
    13: zel_cwan_gsm_api_lte_tech_set             lte_tech_set
    14: zel_cwan_gsm_api_omadm_start              omadm_start
    15: zel_cwan_api_omadm_activate_mode_set      omadm_activate_mode_set
    16: zel_cwan_api_omadm_resp_select            omadm_resp_select
    17: zel_cwan_gsm_api_set_link_recovery        set_link_recovery
    18: zel_cwan_gsm_api_set_active_profiles      set_active_profiles
    19: zel_cwan_api_system_time                  system_time
    20: zel_cwan_gsm_api_sms_delete_rcvd_msg_set  sms_delete_rcvd_msg_set
    21: zel_cwan_gsm_api_sms_msg_info             sms_msg_info
    22: zel_cwan_gsm_api_sms_manage_status_set    sms_manage_status_set
    24: zel_cwan_api_gps_set                      gps_set
    27: zel_cwan_api_gps_port_select              gps_port_select
    28: zel_cwan_api_gps_feature_config           gps_feature_config
}

/// Set request: its kind and its parameters.
struct zel_cwan_msg_set_msg = 1564 {
    zel_cwan_msg_set_type            type
    zel_cwan_msg_set_msg_type_union  body
}
