//! NSC data in segments of 8-bit, 16-bit and complex values.

import "../common/session.tlv"
import "headers.tlv"

/// Control block of a segment: three numbers and a flag.
struct zel_xdsl_g997_nsc_control_block = 1406 {
    uint32       value_1
    uint32       value_2
    uint32       value_3
    zel_boolean  flag
}

/// Up to 512 values of 16 bits.
struct zel_xdsl_g997_nsc_16bit_data_segment = 1407 {
    uint16       value_1
    uint16       value_2
    uint16[512]  data
}

/// Up to 1,024 values of 8 bits.
struct zel_xdsl_g997_nsc_8bit_data_segment = 1408 {
    uint16       value_1
    uint16       value_2
    bytes[1024]  data
}

/// Up to 256 complex values, real and imaginary parts apart. Each part has a count of its own, and no codec
/// compares them.
struct zel_xdsl_g997_nsccomplex_data_segment = 1409 {
    uint16       value_1
    uint16       value_2
    uint16[256]  real_part
    uint16[256]  img_part
}

/// Segment of 16-bit values under its control block.
struct zel_xdsl_nsc_16bit_data = 1441 {
    zel_xdsl_g997_nsc_control_block       control_block
    zel_xdsl_g997_nsc_16bit_data_segment  segment
}

/// Segment of 8-bit values under its control block.
struct zel_xdsl_nsc_8bit_data = 1442 {
    zel_xdsl_g997_nsc_control_block      control_block
    zel_xdsl_g997_nsc_8bit_data_segment  segment
}

/// Segment of complex values under its control block.
struct zel_xdsl_nsc_complex_data = 1443 {
    zel_xdsl_g997_nsc_control_block        control_block
    zel_xdsl_g997_nsccomplex_data_segment  segment
}

/// Type of a segment of 16-bit NSC data.
enum zel_xdsl_nsc_16bit_type = 1432

/// Statistics as one segment of 16-bit NSC data.
message zel_xdsl_stats_nsc_16bit_data_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_nsc_16bit_type      nsc_16bit_type
    zel_xdsl_nsc_16bit_data      nsc_16bit_data
}

/// Type of a segment of 8-bit NSC data.
enum zel_xdsl_nsc_8bit_type = 1433

/// Statistics as one segment of 8-bit NSC data.
message zel_xdsl_stats_nsc_8bit_data_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_nsc_8bit_type       nsc_8bit_type
    zel_xdsl_nsc_8bit_data       nsc_8bit_data
}

/// Type of a segment of complex NSC data.
enum zel_xdsl_nsc_complex_type = 1434

/// Statistics as one segment of complex NSC data.
message zel_xdsl_stats_nsc_complex_data_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_nsc_complex_type    nsc_complex_type
    zel_xdsl_nsc_complex_data    nsc_complex_data
}
