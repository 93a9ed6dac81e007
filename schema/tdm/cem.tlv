//! Circuit emulation, which carries T1/E1 time slots over a packet network.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "dsx1_line.tlv"

/// Layer-1 mode; chooses whether the circuit identity carries a byte behind it.
enum zel_cem_layer1_mode = 1205

/// One byte in the modes 0 to 2, nothing in any other. Mode 0 selects too, unlike in the batch settings.
union zel_cem_id_mode_union by zel_cem_layer1_mode layer1_mode {
    0, 1, 2: uint8  value
}

/// Circuit identity: 69 bytes on the wire in the modes 0 to 2, 64 in any other.
struct zel_cem_id = 1174 {
    zel_cem_layer1_mode    layer1_mode
    zel_cem_id_mode_union  mode
    zel_boolean            flag_1
    uint32                 value_1
    zel_boolean            flag_2
    uint32                 value_2
    uint32                 value_3
}

/// Mode of a circuit emulation interface.
enum cem_mode = 1196

/// Clock mode of a circuit emulation interface.
enum cem_clk_mode = 1197

/// Configuration of a circuit emulation interface.
struct cem_interface_info = 1175 {
    zel_cem_id          cem_id
    uint16              value_1
    uint16              value_2
    zel_if_admin_state  admin_state
    uint32              value_3
    cem_mode            mode
    cem_clk_mode        clk_mode
    zel_boolean         flag_1
    zel_boolean         flag_2
}

/// Type of a deletion.
enum cem_delete_type = 1206

/// Interface or circuit to delete.
struct cem_delete = 1176 {
    zel_cem_id       cem_id
    cem_delete_type  type
}

bytes cem_vc_info_idle_pat_array[32]  // tlvc: W003 because it stands here for the order of types alone

/// Dummy mode of an emulated circuit.
enum cem_dummy_mode = 1199

/// RTP header mode of an emulated circuit.
enum cem_rtp_hdr_mode = 1198

/// UDP mode of an emulated circuit.
enum cem_udp_mode = 1200

/// Signalling mode of an emulated circuit.
enum cem_sig_mode = 1201

/// Configuration of an emulated circuit.
struct cem_vc_info = 1177 {
    zel_cem_id                  cem_id
    uint32                      value_1
    uint32                      value_2
    cem_vc_info_idle_pat_array  idle_pattern
    uint16                      value_3
    cem_dummy_mode              dummy_mode
    uint8                       value_4
    cem_rtp_hdr_mode            rtp_hdr_mode
    cem_udp_mode                udp_mode
    cem_sig_mode                sig_mode
    uint32                      value_5
    uint32                      value_6
    uint16                      value_7
    uint16                      value_8
    uint8                       value_9
    uint8                       value_10
    zel_boolean                 flag
    uint8                       value_11
    bytes[32]                   dummy_pattern as cem_vc_info_dummy_pat_array
}

/// Statistics of one circuit.
struct cem_conn_stats = 1178 {
    uint32       counter_1
    zel_boolean  flag
    uint32       counter_2
    uint64       counter_3
    uint64       counter_4
    uint64       counter_5
    uint64       counter_6
    uint64       counter_7
    uint64       counter_8
    uint64       counter_9
    uint64       counter_10
    uint64       counter_11
    uint64       counter_12
    uint64       counter_13
    uint64       counter_14
    uint64       counter_15
    uint64       counter_16
    uint64       counter_17
    uint64       counter_18
    uint16       counter_19
}

/// Defect of an emulated circuit.
enum cem_defect = 1208

/// Defects of one circuit.
struct cem_conn_defects = 1179 {
    uint32      value
    cem_defect  defect
}

/// Circuit identifier, in two numbers.
struct zel_cem_cid = 1184 {
    uint32  value_1
    uint16  value_2
}

/// Line alarm to forward, with the identity of a circuit.
struct zel_dsx1_alarm_fwd = 1185 {
    zel_cem_id      cem_id
    zel_dsx1_alarm  alarm
    zel_boolean     flag
}

/// Request to configure a circuit emulation interface.
message cem_interface_config_message { app_sess_hdr session  ifid interface  cem_interface_info config }

/// Request to delete an interface or a circuit.
message cem_intf_conn_delete_message { app_sess_hdr session  ifid interface  cem_delete deletion }

/// Request to configure an emulated circuit.
message cem_connection_config_message { app_sess_hdr session  ifid interface  cem_vc_info config }

/// Report of a circuit's statistics.
message cem_connection_statistics_message { app_sess_hdr session  ifid interface  cem_conn_stats stats }

/// Report of a circuit's defects.
message cem_connection_defects_message { app_sess_hdr session  ifid interface  cem_conn_defects defects }

/// Message with a circuit identifier.
message cem_connection_id_message { app_sess_hdr session  ifid interface  zel_cem_cid cid }

/// Request for a liveness check, without a body.
message cem_ping_req_message { app_sess_hdr session  ifid interface }

/// Body of a checksum verification, two numbers.
struct zel_verify_msg_blk = 1192 {
    uint32  value_1
    uint32  value_2
}

/// Request for a consistency check by checksum.
message cem_chksum_verify_req_message {
    app_sess_hdr        session
    ifid                interface
    zel_verify_msg_blk  verify_msg_blk
}

/// Block of a circuit bitmap, up to 256 bytes.
struct zel_bitmap_blk = 1193 {
    /// No codec counts the bytes by it.
    uint32      value
    bytes[256]  vcd_blk
}

/// Request for a consistency check by bitmap.
message cem_vc_bitmap_verify_req_message { app_sess_hdr session  ifid interface  zel_bitmap_blk bitmap_blk }

/// Answer to cem_vc_bitmap_verify_req_message, with the same body.
message cem_vc_bitmap_verify_resp_message { app_sess_hdr session  ifid interface  zel_bitmap_blk bitmap_blk }

/// Body of a group update request.
struct zel_req_info = 1194 {
    uint8        value
    zel_boolean  flag
}

/// Request for a group update.
message cem_grp_update_req_message { app_sess_hdr session  ifid interface  zel_req_info req_info }

/// Request to configure the forwarding of a line alarm.
message dsx1_alarm_forward_cfg_message { app_sess_hdr session  ifid interface  zel_dsx1_alarm_fwd alarm_fwd }
