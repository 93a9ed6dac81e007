//! State of channels and lines, trellis, bands and DELT results.

import "../common/session.tlv"
import "configuration.tlv"
import "headers.tlv"

/// State of one channel, in fourteen numbers.
struct zel_xdsl_channel_status = 1401 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
    uint32  value_5
    uint32  value_6
    uint32  value_7
    uint32  value_8
    uint32  value_9
    uint32  value_10
    uint32  value_11
    uint32  value_12
    uint32  value_13
    uint32  value_14
}

/// State of a line after ITU-T G.997.1: LATN, SATN and SNR, one value a band, and eight numbers. Whether the
/// values of the bands are signed, their 32 bits do not say.
struct zel_xdsl_g997_line_state = 1404 {
    uint32[6]  latn
    uint32[6]  satn
    uint32[6]  snr
    int32      value_1
    int32      value_2
    int32      value_3
    int32      value_4
    int32      value_5
    int32      value_6
    int32      value_7
    int32      value_8
}

/// Status of a band, in three numbers.
struct zel_xdsl_sc_status_band = 1416 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
}

/// DELT status of the sub-carriers, in seven numbers.
struct zel_xdsl_scstatus_data = 1417 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
    uint16  value_6
    uint16  value_7
}

/// States of two channels; only their order tells them apart.
struct zel_xdsl_chan_status = 1439 {
    zel_xdsl_channel_status  channel_status_1
    zel_xdsl_channel_status  channel_status_2
}

/// HLIN scale of DELT.
struct zel_xdsl_delt_hlin_scale = 1429 {
    uint16  scale
}

/// Two line states; only their order tells them apart.
struct zel_xdsl_line_state = 1440 {
    zel_xdsl_g997_line_state  line_state_1
    zel_xdsl_g997_line_state  line_state_2
}

/// Statistics message with the states of two channels.
message zel_xdsl_stats_chan_st_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_chan_status         chan_status
}

/// Statistics message with two states of a line.
message zel_xdsl_stats_line_st_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_line_state          line_state
}

/// Statistics message with the trellis configuration of a line.
message zel_xdsl_stats_trellis_cfg_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_trellis_cfg         trellis_cfg
}

/// Statistics message with the status of a band.
message zel_xdsl_stats_line_band_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_sc_status_band      sc_status_band
}

/// Statistics message with the DELT status of the sub-carriers.
message zel_xdsl_stats_delt_scstatus_grp_size_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_scstatus_data       scstatus_data
}

/// Statistics message with the HLIN scale.
message zel_xdsl_stats_delt_hlin_scale_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_delt_hlin_scale     delt_hlin_scale
}
