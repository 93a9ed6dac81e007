//! Headers that follow the interface in xDSL messages.

/// Command header, which every xDSL message carries behind the interface.
struct zel_xdsl_cmd_hdr = 1397 {
    uint16  value_1
    uint8   value_2
    uint8   value_3
}

/// Direction of a line operation.
enum zel_xdsl_direction = 1381

/// Endpoint of a line operation.
enum zel_xdsl_endpoint = 1382

/// Line-operation header, which most xDSL messages carry behind the command header.
struct zel_xdsl_line_operation_hdr = 1398 {
    uint8               value_1
    uint8               value_2
    zel_xdsl_direction  direction
    zel_xdsl_endpoint   endpoint
    uint32              value_3
}
