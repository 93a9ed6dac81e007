//! Settings of T1/E1 lines and channel groups. Each is a structure with a tag of its own, even around a
//! single number, so that its own message and a batch carry the same bytes.

import "../common/session.tlv"
import "../ethernet/interface.tlv"

/// Channel group to enable.
struct dsx1_vc_enable = 1152 {
    uint32       value_1
    uint32       value_2
    zel_boolean  flag_1
    zel_boolean  flag_2
}

/// Administrative state of a line or of a channel group.
struct dsx1_admin = 1153 {
    zel_if_admin_state  admin_state
    zel_log_event_flag  log_event_flag
}

/// Command for an interface descriptor.
struct dsx1_idb = 1154 {
    uint32      value
    if_command  command
}

/// Service type of a T1/E1 line.
enum zel_dsx1_service_type = 1089

/// Service setting.
struct dsx1_service = 1155 {
    zel_dsx1_service_type  type
}

/// Data inversion of a channel group.
struct dsx1_inv_data = 1156 {
    if_state  state
}

/// Serial CRC setting.
struct dsx1_crc = 1157 {
    if_state  state
}

/// Speed of a sub-rate.
enum zel_ds0_speed = 1095

/// Sub-rate setting.
struct dsx1_subrate = 1158 {
    zel_ds0_speed  speed
}

/// Alternative idle setting.
struct dsx1_alt_idle = 1159 {
    if_state  state
}

/// Encapsulation of a channel group.
struct dsx1_encap = 1160 {
    if_enctype  enctype
}

/// Loopback of a T1/E1 line or channel group.
enum zel_t1e1_loopback = 1097

/// Status of a remote loop.
enum zel_t1e1_remote_loop_status = 1098

/// Loopback settings of a line or of a channel group; a remote loopback has them too.
struct dsx1_loopback = 1161 {
    zel_t1e1_loopback            loopback
    zel_boolean                  flag_1
    zel_boolean                  flag_2
    zel_t1e1_remote_loop_status  remote_loop_status
    zel_boolean                  flag_3
}

/// Framing of a T1/E1 line.
enum zel_t1e1_framing = 1096

/// Framing setting.
struct dsx1_framing = 1162 {
    zel_t1e1_framing  framing
}

/// Clock source setting.
struct dsx1_clock = 1163 {
    clock_src  source
}

/// Line code of a T1/E1 line.
enum zel_dsx1_linecode_type = 1088

/// Line code setting.
struct dsx1_linecode = 1164 {
    zel_dsx1_linecode_type  type
}

/// Type of a facility data link.
enum zel_dsx1_fdl_type = 1087

/// Facility data link setting.
struct dsx1_fdl = 1165 {
    zel_dsx1_fdl_type  type
}

/// Length of a short cable.
enum zel_dsx1_cable_length = 1083

/// Gain of a cable, short or long.
enum zel_dsx1_gain_type = 1086

/// Length and gain of a short cable.
struct dsx1_short_cable = 1166 {
    zel_dsx1_cable_length  cable_length
    zel_dsx1_gain_type     gain
}

/// Pulse shape of a long cable.
enum zel_dsx1_pulse_type = 1084

/// Pulse shape and gain of a long cable.
struct dsx1_long_cable = 1167 {
    zel_dsx1_pulse_type  pulse
    zel_dsx1_gain_type   gain
}

/// Type of the cable of a T1/E1 line.
enum zel_dsx1_cable_type = 1082

/// Cable of a line. Both kinds are always sent, whichever one the type names.
struct dsx1_cable = 1168 {
    zel_dsx1_cable_type  type
    dsx1_short_cable     short_cable
    dsx1_long_cable      long_cable
}

/// PMC cable length of a T1/E1 line. Stands alone: no other type holds it.
enum zel_dsx1_pmc_cable_length = 1085  // tlvc: W002 because no type of any family holds it

/// Homologation variant of a T1/E1 line.
enum zel_dsx1_homologation_type = 1081

/// Homologation setting.
struct dsx1_homol = 1169 {
    zel_dsx1_homologation_type  type
}

/// Yellow alarm setting, in two states.
struct dsx1_yellow = 1170 {
    if_state  state_1
    if_state  state_2
}

/// National bits of a line.
struct dsx1_nat_resrv = 1171 {
    uint8  bits
}

/// Command of a batch entry; chooses the setting that follows it.
enum dsx1_batch_cmd = 1195

/// Setting of a batch entry, the same bytes as in the message that sets it alone. An unknown command, 0
/// included, carries none, and that is no fault.
union dsx1_batch_cfg_cmd_type_union by dsx1_batch_cmd command {
    1: dsx1_loopback   loopback
    2: dsx1_framing    framing
    3: dsx1_clock      clock
    4: dsx1_linecode   linecode
    5: dsx1_fdl        fdl
    6: dsx1_cable      cable
    7: dsx1_homol      homol
    8: dsx1_yellow     yellow
    9: dsx1_nat_resrv  nat_resrv
}

/// Entry of a batch: a command and its setting.
struct dsx1_batch_cfg = 1172 {
    dsx1_batch_cmd                 command
    dsx1_batch_cfg_cmd_type_union  setting
}

/// Up to ten settings.
struct dsx1_batch_cfg_bundle = 1173 {
    /// No codec counts the entries by it.
    uint8               value
    dsx1_batch_cfg[10]  commands as dsx1_batch_cfg_bundle_cmd_array
}

/// TS mode of a line, in four numbers.
struct dsx1_ts_mode_cfg = 1242 {
    uint8   value_1
    uint8   value_2
    uint8   value_3
    uint32  value_4
}

/// Termination of a T1/E1 line.
enum zel_dsx1_line_termination = 1236

/// Line termination setting.
struct dsx1_line_termination = 1243 {
    zel_dsx1_line_termination  termination
}
