//! Commands to T1/E1 controllers and the updates that come back. Some share a body; only their names tell
//! those apart.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "dsx1_config.tlv"
import "dsx1_line.tlv"
import "serial_line.tlv"

/// Command to enable a channel group.
message dsx1_vcmap_enable_cmd_message { app_sess_hdr session  ifid interface  dsx1_vc_enable vc_enable }

/// Command to set the MTU of a channel group, as a limit of received bytes.
message dsx1_vc_mtu_cmd_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Command to set the limit of received bytes of a line.
message dsx1_rxbytes_cmd_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Command to set the transmit delay of a channel group.
message dsx1_vc_txdelay_cmd_message { app_sess_hdr session  ifid interface  if_timer timer }

/// Query of the channel group map, without a body.
message dsx1_vcmap_query_cmd_message { app_sess_hdr session  ifid interface }

/// Command to make up to ten settings at once.
message dsx1_batch_config_cmd_message { app_sess_hdr session  ifid interface  dsx1_batch_cfg_bundle batch }

/// Command to manage an interface descriptor.
message dsx1_manage_idb_cmd_message { app_sess_hdr session  ifid interface  dsx1_idb idb }

/// Command to set the cable of a line.
message dsx1_cable_length_cmd_message { app_sess_hdr session  ifid interface  dsx1_cable cable }

/// Command to set the TS mode of a line.
message dsx1_ts_mode_cmd_message { app_sess_hdr session  ifid interface  dsx1_ts_mode_cfg ts_mode_cfg }

/// Command to set the framing of a line.
message dsx1_framing_cmd_message { app_sess_hdr session  ifid interface  dsx1_framing framing }

/// Command to set the homologation of a line.
message dsx1_homol_cmd_message { app_sess_hdr session  ifid interface  dsx1_homol homol }

/// Command to set the clock source of a line.
message dsx1_clocking_cmd_message { app_sess_hdr session  ifid interface  dsx1_clock clock }

/// Command to set the line code of a line.
message dsx1_linecode_cmd_message { app_sess_hdr session  ifid interface  dsx1_linecode linecode }

/// Command to set the length and gain of a short cable.
message dsx1_short_cable_cmd_message { app_sess_hdr session  ifid interface  dsx1_short_cable short_cable }

/// Command to set the loopback of a line.
message dsx1_loopback_cmd_message { app_sess_hdr session  ifid interface  dsx1_loopback loopback }

/// Command to set the facility data link of a line.
message dsx1_fdl_cmd_message { app_sess_hdr session  ifid interface  dsx1_fdl fdl }

/// Command to set the national bits of a line.
message dsx1_national_bit_cmd_message { app_sess_hdr session  ifid interface  dsx1_nat_resrv nat_resrv }

/// Command to set the sub-rate.
message dsx1_subrate_cmd_message { app_sess_hdr session  ifid interface  dsx1_subrate subrate }

/// Command to set the encapsulation of a channel group.
message dsx1_vc_encap_cmd_message { app_sess_hdr session  ifid interface  dsx1_encap encap }

/// Command to set the loopback of a channel group.
message dsx1_vc_loopback_cmd_message { app_sess_hdr session  ifid interface  dsx1_loopback loopback }

/// Command to set the administrative state of a channel group.
message dsx1_vc_admin_state_cmd_message { app_sess_hdr session  ifid interface  dsx1_admin admin }

/// Command to set the data inversion of a channel group.
message dsx1_vc_data_inv_cmd_message { app_sess_hdr session  ifid interface  dsx1_inv_data inv_data }

/// Command to set the serial CRC.
message dsx1_serial_crc_cmd_message { app_sess_hdr session  ifid interface  dsx1_crc crc }

/// Command to set the alternative idle.
message dsx1_serial_alt_idle_cmd_message { app_sess_hdr session  ifid interface  dsx1_alt_idle alt_idle }

/// Command to set the service type of a line.
message dsx1_service_cmd_message { app_sess_hdr session  ifid interface  dsx1_service service }

/// Command to set the yellow alarm of a line.
message dsx1_yellow_cmd_message { app_sess_hdr session  ifid interface  dsx1_yellow yellow }

/// Loveletter FC command, whose whole body is an interface state.
message dsx1_loveletter_fc_cmd_message { app_sess_hdr session  ifid interface  if_state state }

/// D-channel command for a channel group, without a body.
message dsx1_vc_dchan_cmd_message { app_sess_hdr session  ifid interface }

/// Command to clear the counters, without a body.
message dsx1_clear_counter_cmd_message { app_sess_hdr session  ifid interface }

/// Command to set the administrative state of a line.
message dsx1_admin_state_cmd_message { app_sess_hdr session  ifid interface  dsx1_admin admin }

/// Type of a T1/E1 port.
enum zel_dsx1_port_type = 1079

/// Command to set the type of a port.
message dsx1_port_type_cmd_message { app_sess_hdr session  ifid interface  zel_dsx1_port_type port_type }

/// Checksum of a channel group, in two numbers.
struct dsx1_vc_checksum = 1186 {
    uint8   value_1
    uint32  value_2
}

/// Command with the checksum of a channel group.
message dsx1_vc_checksum_cmd_message { app_sess_hdr session  ifid interface  dsx1_vc_checksum vc_checksum }

/// Command for a bit-error-rate test, with the test configuration of the serial interfaces.
message dsx1_vc_bert_cmd_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_serial_extended_bert_cfg  bert_cfg
}

/// Report of how the creation of an interface descriptor went.
message dsx1_hwidb_created_message { app_sess_hdr session  ifid interface  if_create_status create_status }

/// Report of a connection identifier.
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
struct dsx1_vc_stats_bundle = 1188 {
    /// No codec counts the channels by it.
    uint32             value
    dsx1_vc_stats[16]  stats as dsx1_vc_stats_bundle_stat_array
}

/// Report of channel statistics.
message dsx1_vc_stats_update_message { app_sess_hdr session  ifid interface  dsx1_vc_stats_bundle stats }

/// Report of the state of a bit-error-rate test.
message dsx1_bert_update_message { app_sess_hdr session  ifid interface  dsx_bert_info bert_info }

/// State of a line: that of its interface descriptor, and its alarm.
struct dsx1_linestate_info = 1189 {
    zel_rpx_idb_state  idb_state
    zel_dsx1_alarm     alarm
}

/// Report of the state of a line.
message dsx1_linestate_update_message {
    app_sess_hdr         session
    ifid                 interface
    dsx1_linestate_info  linestate_info
}

/// Mode of an update of performance-monitoring tables.
enum dsx1_update_mode = 1207

/// Performance-monitoring tables of a line, two of each form.
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

/// Report of a line's performance-monitoring tables.
message dsx1_mib_update_message { app_sess_hdr session  ifid interface  dsx1_MIBData mib_data }

/// Performance-monitoring tables of a line in the FE form, two of them.
struct dsx1_FEMIBData = 1191 {
    dsx1_update_mode      update_mode
    zel_t1e1_FETableType  table_1
    zel_t1e1_FETableType  table_2
}

/// Report of a line's performance-monitoring tables in the FE form.
message dsx1_femib_update_message { app_sess_hdr session  ifid interface  dsx1_FEMIBData fe_mib_data }

/// Message with a remote loopback.
message dsx1_remote_loopback_message { app_sess_hdr session  ifid interface  dsx1_loopback loopback }

/// Command to set the termination of a line.
message dsx1_line_termination_cmd_message {
    app_sess_hdr           session
    ifid                   interface
    dsx1_line_termination  line_termination
}
