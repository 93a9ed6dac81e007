//! Settings of T1/E1 lines. Each is a structure with a tag of its own, even around a single number, so that
//! its own message and a batch carry the same bytes.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "dsx1_line.tlv"

/// Enables a channel group.
struct dsx1_vc_enable = 1152 {
    uint32       value_1
    uint32       value_2
    zel_boolean  flag_1
    zel_boolean  flag_2
}

/// Administrative state, of a line or of a channel group.
struct dsx1_admin = 1153 {
    zel_if_admin_state  admin_state
    zel_log_event_flag  log_event_flag
}

/// Command for an interface descriptor.
struct dsx1_idb = 1154 {
    uint32      value
    if_command  command
}

/// Service type.
struct dsx1_service = 1155 {
    zel_dsx1_service_type  type
}

/// Data inversion.
struct dsx1_inv_data = 1156 {
    if_state  state
}

/// Serial CRC.
struct dsx1_crc = 1157 {
    if_state  state
}

/// Sub-rate speed.
struct dsx1_subrate = 1158 {
    zel_ds0_speed  speed
}

/// Alternative idle.
struct dsx1_alt_idle = 1159 {
    if_state  state
}

/// Encapsulation.
struct dsx1_encap = 1160 {
    if_enctype  enctype
}

/// Loopback of a line or a channel group, local or remote.
struct dsx1_loopback = 1161 {
    zel_t1e1_loopback            loopback
    zel_boolean                  flag_1
    zel_boolean                  flag_2
    zel_t1e1_remote_loop_status  remote_loop_status
    zel_boolean                  flag_3
}

/// Framing.
struct dsx1_framing = 1162 {
    zel_t1e1_framing  framing
}

/// Clock source.
struct dsx1_clock = 1163 {
    clock_src  source
}

/// Line code.
struct dsx1_linecode = 1164 {
    zel_dsx1_linecode_type  type
}

/// Facility data link.
struct dsx1_fdl = 1165 {
    zel_dsx1_fdl_type  type
}

/// Length and gain of a short cable.
struct dsx1_short_cable = 1166 {
    zel_dsx1_cable_length  cable_length
    zel_dsx1_gain_type     gain
}

/// Pulse shape and gain of a long cable.
struct dsx1_long_cable = 1167 {
    zel_dsx1_pulse_type  pulse
    zel_dsx1_gain_type   gain
}

/// Cable of a line. Both kinds are always sent, whichever one the type names.
struct dsx1_cable = 1168 {
    zel_dsx1_cable_type  type
    dsx1_short_cable     short_cable
    dsx1_long_cable      long_cable
}

/// Homologation.
struct dsx1_homol = 1169 {
    zel_dsx1_homologation_type  type
}

/// Yellow alarm.
struct dsx1_yellow = 1170 {
    if_state  state_1
    if_state  state_2
}

/// National bits.
struct dsx1_nat_resrv = 1171 {
    uint8  bits
}

/// Chooses what an entry of a batch sets.
enum dsx1_batch_cmd = 1195

/// One setting, the same bytes as in the message that sets it alone. An unknown command, 0 included,
/// carries none, and that is no fault.
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

/// The entries of a batch.
array dsx1_batch_cfg_bundle_cmd_array of dsx1_batch_cfg[10]

/// Up to ten settings for one line.
struct dsx1_batch_cfg_bundle = 1173 {
    uint8                            value
    dsx1_batch_cfg_bundle_cmd_array  commands
}

/// Body of dsx1_ts_mode_cmd_message.
struct dsx1_ts_mode_cfg = 1242 {
    uint8   value_1
    uint8   value_2
    uint8   value_3
    uint32  value_4
}

/// Line termination.
struct dsx1_line_termination = 1243 {
    zel_dsx1_line_termination  termination
}
