//! LEDs, codecs, idle modes, loopbacks, TDM connections, DS0 dumps and reports of voice ports.

import "../common/session.tlv"

/// Colour of a front-panel LED.
enum zel_led_color = 1362

/// Front-panel LED, and the colour that it is to show.
struct zel_led_control = 1357 {
    uint16         slot
    uint16         port
    zel_led_color  color
}

/// Request to set a front-panel LED of an analog or BRI module.
message analogbri_led_control_req_message {
    app_sess_hdr     session
    ifid             interface
    zel_led_control  led_control
}

/// Operation of a codec selection.
enum zel_codec_op = 1363

/// Codec selection.
struct zel_set_codec = 1358 {
    uint16        value
    zel_codec_op  codec_op
}

/// Request to select the codec of an analog port.
message analog_set_codec_req_message { app_sess_hdr session  ifid interface  zel_set_codec set_codec }

/// Idle mode of an E&M port.
enum zel_em_idle_mode = 1365

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

/// E-lead option of an analog port, in two numbers.
struct zel_enable_e_lead_option = 1360 {
    uint16  value_1
    uint16  value_2
}

/// Request to enable the E-lead option of an analog port.
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

/// Pair of a TDM connection between a voice port and a backplane time slot.
struct zel_analogbri_conn_pair = 1350 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
}

/// Room for one pair, on purpose, although its count could say more.
array zel_analogbri_tdm_conn_req_conn_pair_array of zel_analogbri_conn_pair[1]

/// TDM connection to set up.
struct zel_analogbri_tdm_conn_req = 1351 {
    uint16                                      value_1
    uint16                                      value_2
    uint16                                      value_3
    zel_analogbri_tdm_conn_req_conn_pair_array  conn_pair
}

/// Result of setting up a TDM connection. It holds its one pair directly, not in an array.
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

/// Answer to analogbri_tdm_conn_req_message.
message analogbri_tdm_conn_resp_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_analogbri_tdm_conn_resp  tdm_conn_resp
}

/// DS0 dump to take, and the destination of the dump as text.
struct zel_analogbri_ds0_dump_req = 1353 {
    uint16      value_1
    uint16      value_2
    uint16      value_3
    uint16      value_4
    uint16      value_5
    uint16      value_6
    bytes[335]  destination
}

/// Result of a DS0 dump, in five numbers.
struct zel_analogbri_ds0_dump_resp = 1354 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
}

/// Request for a DS0 dump.
message analogbri_ds0_dump_req_message {
    app_sess_hdr                session
    ifid                        interface
    zel_analogbri_ds0_dump_req  ds0_dump_req
}

/// Answer to analogbri_ds0_dump_req_message.
message analogbri_ds0_dump_resp_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_analogbri_ds0_dump_resp  ds0_dump_resp
}

/// Free-form report: a number and up to 1,900 characters of text.
struct kavu_analogbri_generic_report = 1349 {
    uint8        value
    bytes[1900]  buffer
}

/// Generic report of a voice port module. It has neither session header nor interface: on the wire the
/// message and its body are the same bytes.
message zel_kavu_analogbri_generic_report_message { kavu_analogbri_generic_report generic_report }

/// Kind of a show request to a voice port module.
enum kavu_analogbri_show_if_req_type = 1347

/// Request to show an interface of a voice port module.
message zel_kavu_analogbriif_show_if_req_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_analogbri_show_if_req_type  req_type
}

/// Kind of a clear request to a voice port module.
enum kavu_analogbri_clear_if_req_type = 1348

/// Request to clear an interface of a voice port module.
message zel_kavu_analogbriif_clear_if_req_message {
    app_sess_hdr                      session
    ifid                              interface
    kavu_analogbri_clear_if_req_type  req_type
}
