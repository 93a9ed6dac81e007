//! Voice port modules, analog (FXS, FXO, E&M) and BRI, and the BRI controllers of voice and WAN modules.
//! Requests (_req_) go from the control plane to the module; responses (_resp_) and reports come back.

// This file covers what voice ports share, from LED and codec to TDM connections and reports.

import "../common/session.tlv"

enum zel_led_color = 1362
enum zel_codec_op = 1363
enum zel_em_idle_mode = 1365

/// Colour that a front-panel LED is to show.
struct zel_led_control = 1357 {
    uint16         slot
    uint16         port
    zel_led_color  color
}

/// Request to set a front-panel LED, for analog and BRI ports alike.
message analogbri_led_control_req_message {
    app_sess_hdr     session
    ifid             interface
    zel_led_control  led_control
}

/// Codec selection, as an operation.
struct zel_set_codec = 1358 {
    uint16        value
    zel_codec_op  codec_op
}

/// Request to select the codec of an analog port.
message analog_set_codec_req_message { app_sess_hdr session  ifid interface  zel_set_codec set_codec }

/// Default idle mode of an E&M port.
struct zel_em_default_idle_mode = 1359 {
    uint16            value
    zel_em_idle_mode  idle_mode
}

/// Request to set the default idle mode of an E&M port.
message analog_default_idle_mode_req_message {
    app_sess_hdr              session
    ifid                      interface
    zel_em_default_idle_mode  default_idle_mode
}

/// E-lead option of an E&M port.
struct zel_enable_e_lead_option = 1360 {
    uint16  value_1
    uint16  value_2
}

/// Request to set the E-lead option of an E&M port.
message analog_enable_e_lead_option_req_message {
    app_sess_hdr              session
    ifid                      interface
    zel_enable_e_lead_option  enable_e_lead_option
}

/// Loopback of a BRI port, in two numbers. The BRI controllers have their own: zel_bri_loop_back.
struct zel_bri_loopback = 1361 {
    uint16  value_1
    uint16  value_2
}

/// Request for a loopback on a BRI port.
message analog_bri_loopback_req_message {
    app_sess_hdr      session
    ifid              interface
    zel_bri_loopback  bri_loopback
}

/// One pair of a TDM connection, which joins a voice port to a backplane time slot.
struct zel_analogbri_conn_pair = 1350 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
}

/// Room for one pair, on purpose, although its count could say more.
array zel_analogbri_tdm_conn_req_conn_pair_array of zel_analogbri_conn_pair[1]

/// TDM connection to set up between a voice port and a backplane time slot.
struct zel_analogbri_tdm_conn_req = 1351 {
    uint16                                      value_1
    uint16                                      value_2
    uint16                                      value_3
    zel_analogbri_tdm_conn_req_conn_pair_array  conn_pair
}

/// Answer to a connection set-up. It holds its one pair directly, not in an array.
struct zel_analogbri_tdm_conn_resp = 1352 {
    uint16                   value_1
    uint16                   value_2
    zel_analogbri_conn_pair  conn_pair
    uint16                   value_3
    uint16                   value_4
    uint16                   value_5
}

/// Request to set up a TDM connection.
message analogbri_tdm_conn_req_message {
    app_sess_hdr                session
    ifid                        interface
    zel_analogbri_tdm_conn_req  tdm_conn_req
}

/// The module's answer to analogbri_tdm_conn_req_message.
message analogbri_tdm_conn_resp_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_analogbri_tdm_conn_resp  tdm_conn_resp
}

/// Where a DS0 dump goes, as text.
bytes zel_analogbri_ds0_dump_req_destination_array[335]

/// DS0 dump to take, and its destination.
struct zel_analogbri_ds0_dump_req = 1353 {
    uint16                                        value_1
    uint16                                        value_2
    uint16                                        value_3
    uint16                                        value_4
    uint16                                        value_5
    uint16                                        value_6
    zel_analogbri_ds0_dump_req_destination_array  destination
}

/// Answer to a DS0 dump request, in five numbers.
struct zel_analogbri_ds0_dump_resp = 1354 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
}

/// Request to dump a DS0.
message analogbri_ds0_dump_req_message {
    app_sess_hdr                session
    ifid                        interface
    zel_analogbri_ds0_dump_req  ds0_dump_req
}

/// The module's answer to analogbri_ds0_dump_req_message.
message analogbri_ds0_dump_resp_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_analogbri_ds0_dump_resp  ds0_dump_resp
}

/// Text of a generic report.
bytes kavu_analogbri_generic_report_buffer_array[1900]

/// Free-form report: a number and up to 1,900 characters of text.
struct kavu_analogbri_generic_report = 1349 {
    uint8                                       value
    kavu_analogbri_generic_report_buffer_array  buffer
}

/// Report that the module sends up. It has neither session header nor interface: on the wire the message
/// and its body are the same bytes.
message zel_kavu_analogbri_generic_report_message { kavu_analogbri_generic_report generic_report }

/// Kind of show request.
enum kavu_analogbri_show_if_req_type = 1347

/// Request to show an interface.
message zel_kavu_analogbriif_show_if_req_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_analogbri_show_if_req_type  req_type
}

/// Kind of clear request.
enum kavu_analogbri_clear_if_req_type = 1348

/// Request to clear an interface.
message zel_kavu_analogbriif_clear_if_req_message {
    app_sess_hdr                      session
    ifid                              interface
    kavu_analogbri_clear_if_req_type  req_type
}
