//! Messages of T1/E1 controllers: the commands that set one thing or many, and the updates that come back.
//! Some share a body; only their names tell those apart.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "dsx1_config.tlv"
import "dsx1_line.tlv"
import "serial_line.tlv"

/// Enables a channel group.
message dsx1_vcmap_enable_cmd_message { app_sess_hdr session  ifid interface  dsx1_vc_enable vc_enable }

/// Sets the MTU of a channel group, as a limit of received bytes.
message dsx1_vc_mtu_cmd_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Sets the limit of received bytes of a line.
message dsx1_rxbytes_cmd_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Sets the transmit delay of a channel group.
message dsx1_vc_txdelay_cmd_message { app_sess_hdr session  ifid interface  if_timer timer }

/// Asks for the channel group map. There is no body.
message dsx1_vcmap_query_cmd_message { app_sess_hdr session  ifid interface }

/// Configures up to ten settings of a line at once.
message dsx1_batch_config_cmd_message { app_sess_hdr session  ifid interface  dsx1_batch_cfg_bundle batch }

/// Manages an interface descriptor.
message dsx1_manage_idb_cmd_message { app_sess_hdr session  ifid interface  dsx1_idb idb }

/// Sets the cable, short and long.
message dsx1_cable_length_cmd_message { app_sess_hdr session  ifid interface  dsx1_cable cable }

/// Sets the ts mode.
message dsx1_ts_mode_cmd_message { app_sess_hdr session  ifid interface  dsx1_ts_mode_cfg ts_mode_cfg }

/// Sets the framing.
message dsx1_framing_cmd_message { app_sess_hdr session  ifid interface  dsx1_framing framing }

/// Sets the homologation.
message dsx1_homol_cmd_message { app_sess_hdr session  ifid interface  dsx1_homol homol }

/// Sets the clock source.
message dsx1_clocking_cmd_message { app_sess_hdr session  ifid interface  dsx1_clock clock }

/// Sets the line code.
message dsx1_linecode_cmd_message { app_sess_hdr session  ifid interface  dsx1_linecode linecode }

/// Sets the length and gain of a short cable.
message dsx1_short_cable_cmd_message { app_sess_hdr session  ifid interface  dsx1_short_cable short_cable }

/// Sets a loopback of a line.
message dsx1_loopback_cmd_message { app_sess_hdr session  ifid interface  dsx1_loopback loopback }

/// Sets the facility data link.
message dsx1_fdl_cmd_message { app_sess_hdr session  ifid interface  dsx1_fdl fdl }

/// Sets the national bits.
message dsx1_national_bit_cmd_message { app_sess_hdr session  ifid interface  dsx1_nat_resrv nat_resrv }

/// Sets the sub-rate.
message dsx1_subrate_cmd_message { app_sess_hdr session  ifid interface  dsx1_subrate subrate }

/// Sets the encapsulation of a channel group.
message dsx1_vc_encap_cmd_message { app_sess_hdr session  ifid interface  dsx1_encap encap }

/// Sets a loopback of a channel group.
message dsx1_vc_loopback_cmd_message { app_sess_hdr session  ifid interface  dsx1_loopback loopback }

/// Sets the administrative state of a channel group.
message dsx1_vc_admin_state_cmd_message { app_sess_hdr session  ifid interface  dsx1_admin admin }

/// Sets the data inversion of a channel group.
message dsx1_vc_data_inv_cmd_message { app_sess_hdr session  ifid interface  dsx1_inv_data inv_data }

/// Sets the serial CRC.
message dsx1_serial_crc_cmd_message { app_sess_hdr session  ifid interface  dsx1_crc crc }

/// Sets the alternative idle.
message dsx1_serial_alt_idle_cmd_message { app_sess_hdr session  ifid interface  dsx1_alt_idle alt_idle }

/// Sets the service type.
message dsx1_service_cmd_message { app_sess_hdr session  ifid interface  dsx1_service service }

/// Sets the yellow alarm.
message dsx1_yellow_cmd_message { app_sess_hdr session  ifid interface  dsx1_yellow yellow }

/// Command whose whole body is a state.
message dsx1_loveletter_fc_cmd_message { app_sess_hdr session  ifid interface  if_state state }

/// D-channel command for a channel group. There is no body.
message dsx1_vc_dchan_cmd_message { app_sess_hdr session  ifid interface }

/// Clears the counters. There is no body.
message dsx1_clear_counter_cmd_message { app_sess_hdr session  ifid interface }

/// Sets the administrative state of a line.
message dsx1_admin_state_cmd_message { app_sess_hdr session  ifid interface  dsx1_admin admin }

/// Sets the port type.
message dsx1_port_type_cmd_message { app_sess_hdr session  ifid interface  zel_dsx1_port_type port_type }

/// Checksum of a channel group.
struct dsx1_vc_checksum = 1186 {
    uint8   value_1
    uint32  value_2
}

/// Carries the checksum of a channel group.
message dsx1_vc_checksum_cmd_message { app_sess_hdr session  ifid interface  dsx1_vc_checksum vc_checksum }

/// Commands a bit-error-rate test, set up as on the serial interfaces.
message dsx1_vc_bert_cmd_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_serial_extended_bert_cfg  bert_cfg
}

/// The module reports how the creation of an interface descriptor came out.
message dsx1_hwidb_created_message { app_sess_hdr session  ifid interface  if_create_status create_status }

/// The module reports a connection identifier.
message dsx1_connection_id_message { app_sess_hdr session  ifid interface  zel_connection_id connection_id }

/// Statistics of one channel.
struct dsx1_vc_stats = 1187 {
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
}

/// Statistics of up to 16 channels.
array dsx1_vc_stats_bundle_stat_array of dsx1_vc_stats[16]

/// The channel statistics of one update.
struct dsx1_vc_stats_bundle = 1188 {
    uint32                           value
    dsx1_vc_stats_bundle_stat_array  stats
}

/// The module reports channel statistics.
message dsx1_vc_stats_update_message { app_sess_hdr session  ifid interface  dsx1_vc_stats_bundle stats }

/// The module reports the state of a bit-error-rate test.
message dsx1_bert_update_message { app_sess_hdr session  ifid interface  dsx_bert_info bert_info }

/// State of a line: that of its interface descriptor, and its alarm.
struct dsx1_linestate_info = 1189 {
    zel_rpx_idb_state  idb_state
    zel_dsx1_alarm     alarm
}

/// The module reports the state of a line.
message dsx1_linestate_update_message {
    app_sess_hdr         session
    ifid                 interface
    dsx1_linestate_info  linestate_info
}

enum dsx1_update_mode = 1207

/// Performance-monitoring tables of a line, two of each kind.
struct dsx1_MIBData = 1190 {
    dsx1_update_mode        update_mode
    uint16                  value_1
    uint16                  value_2
    uint8                   value_3
    uint8                   value_4
    uint8                   value_5
    zel_t1e1_TableType      table_1
    zel_t1e1_TableType      table_2
    zel_t1e1_TableTypeANSI  ansi_table_1
    zel_t1e1_TableTypeANSI  ansi_table_2
}

/// The module reports the performance-monitoring tables of a line.
message dsx1_mib_update_message { app_sess_hdr session  ifid interface  dsx1_MIBData mib_data }

/// Performance-monitoring tables of a line's far end.
struct dsx1_FEMIBData = 1191 {
    dsx1_update_mode      update_mode
    zel_t1e1_FETableType  table_1
    zel_t1e1_FETableType  table_2
}

/// The module reports the performance-monitoring tables of a line's far end.
message dsx1_femib_update_message { app_sess_hdr session  ifid interface  dsx1_FEMIBData fe_mib_data }

/// Carries a remote loopback.
message dsx1_remote_loopback_message { app_sess_hdr session  ifid interface  dsx1_loopback loopback }

/// Sets the line termination.
message dsx1_line_termination_cmd_message {
    app_sess_hdr           session
    ifid                   interface
    dsx1_line_termination  line_termination
}
