//! Responses of a cellular modem to set requests.

import "status.tlv"

/// Response about the bands.
enum zel_cwan_gsm_api_band_set_resp = 1566

/// Response about the PRL region.
struct zel_cwan_gsm_api_prl_region_set_resp = 1567 {
    uint32  value_1
    uint8   value_2
}

/// Response about the deletion of a received short message.
struct zel_cwan_gsm_api_sms_delete_rcvd_msg_set_resp = 1568 {
    uint8  value_1
    uint8  value_2
}

/// Errors of copying short messages to the SIM.
enum zel_cwan_gsm_api_sms_copy_sim_errors = 1569

/// Kind of a set response; there are fewer kinds than set requests have.
enum zel_cwan_msg_set_resp_type = 1565

/// Body of a set response. One byte stands in for responses without a record; above 9 there is none.
union zel_cwan_msg_set_resp_msg_type_union by zel_cwan_msg_set_resp_type type {
                0: zel_cwan_api_radio_power_msg                   radio_power_msg
                1: zel_cwan_gsm_api_band_set_resp                 band_set_resp
    2, 4, 5, 8, 9: uint8                                          value
                3: zel_cwan_gsm_api_prl_region_set_resp           prl_region_set_resp
                6: zel_cwan_gsm_api_sms_delete_rcvd_msg_set_resp  sms_delete_rcvd_msg_set_resp
                7: zel_cwan_gsm_api_sms_copy_sim_errors           sms_copy_sim_errors
}

/// Set response: its kind and its body.
struct zel_cwan_msg_set_resp_msg = 1571 {
    zel_cwan_msg_set_resp_type            type
    zel_cwan_msg_set_resp_msg_type_union  body
}
