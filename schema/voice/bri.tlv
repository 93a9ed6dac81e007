//! ISDN BRI controllers: signal time-outs, interface mode, registers, loopbacks, layer-1 functions and
//! primitives, B channels, line power and state, and clock updates.

import "../common/session.tlv"

/// Signal time-outs of a BRI controller, in two numbers.
struct zel_bri_timeout_signal_config = 1449 {
    uint16  value_1
    uint16  value_2
}

/// Request to configure the signal time-outs of a BRI controller.
message bri_timeout_signal_config_message {
    app_sess_hdr                   session
    ifid                           interface
    zel_bri_timeout_signal_config  timeout_signal_config
}

/// Interface mode of a BRI controller, in four numbers.
struct zel_bri_mode_config = 1450 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
}

/// Request to configure the interface mode of a BRI controller.
message bri_mode_config_message { app_sess_hdr session  ifid interface  zel_bri_mode_config mode_config }

/// Body of a show-controller request, a single number.
struct zel_bri_show_controller = 1451 {
    uint16  value
}

/// Request for the registers of a BRI controller, which bri_show_contr_resp_message answers.
message bri_show_controller_message {
    app_sess_hdr             session
    ifid                     interface
    zel_bri_show_controller  show_controller
}

/// Kind of a BRI loopback; clock updates name one too.
enum zel_bri_loop_back_enum = 1460

/// Loopback of a BRI controller.
struct zel_bri_loop_back = 1452 {
    uint16                  value_1
    uint16                  value_2
    zel_bri_loop_back_enum  kind
}

/// Request for a loopback of a BRI controller.
message bri_loop_back_message { app_sess_hdr session  ifid interface  zel_bri_loop_back loop_back }

/// Controller configuration that goes with a layer-1 function.
struct zel_bri_config = 1453 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
    uint16  value_6
    uint16  value_7
}

/// Layer-1 function that a request asks for.
enum zel_bri_L1_function = 1461

/// Request for a layer-1 function, which follows the configuration as an element of its own.
message bri_L1_function_message {
    app_sess_hdr         session
    ifid                 interface
    zel_bri_config       config
    zel_bri_L1_function  function
}

/// Kind of enabling of a B channel.
enum zel_bri_enable_b_channel_type = 1463

/// B channel to enable.
struct zel_bri_enable_b_chan = 1454 {
    uint16                         value_1
    uint16                         value_2
    zel_bri_enable_b_channel_type  kind
}

/// Request to enable a B channel.
message bri_enable_b_chan_message {
    app_sess_hdr           session
    ifid                   interface
    zel_bri_enable_b_chan  enable_b_chan
}

/// Line power of a BRI controller, in two numbers.
struct zel_bri_line_power_config = 1455 {
    uint16  value_1
    uint16  value_2
}

/// Request to configure the line power of a BRI controller.
message bri_line_power_config_message {
    app_sess_hdr               session
    ifid                       interface
    zel_bri_line_power_config  line_power_config
}

/// Line state of a BRI controller, in two numbers.
struct zel_bri_line_state = 1456 {
    uint16  value_1
    uint16  value_2
}

/// Message with the line state of a BRI controller.
message bri_line_state_message { app_sess_hdr session  ifid interface  zel_bri_line_state line_state }

/// Layer-1 primitive, in three numbers.
struct zel_bri_primitive = 1457 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
}

/// Message with a layer-1 primitive.
message bri_primitive_message { app_sess_hdr session  ifid interface  zel_bri_primitive primitive }

/// Registers, packed: two bytes each.
array zel_bri_show_contr_resp_reg_array of uint16[20]

/// Register dump of a BRI controller. Its last number follows the registers, however many there are.
struct zel_bri_show_contr_resp = 1458 {
    /// No codec counts the registers by it.
    uint16                             value_1
    zel_bri_show_contr_resp_reg_array  registers
    uint16                             value_2
}

/// Answer to bri_show_controller_message.
message bri_show_contr_resp_message {
    app_sess_hdr             session
    ifid                     interface
    zel_bri_show_contr_resp  show_contr_resp
}

/// Kind of a clock update.
enum zel_bri_clock_update_enum = 1462

/// Clock update, with a kind of loopback beside its own.
struct zel_bri_clock_update = 1459 {
    uint16                     value
    zel_bri_loop_back_enum     loop_back_kind
    zel_bri_clock_update_enum  kind
}

/// Message with a clock update.
message bri_clock_update_message { app_sess_hdr session  ifid interface  zel_bri_clock_update clock_update }
