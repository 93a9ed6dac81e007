//! Ethernet ports of an IO module: what the control plane and the port driver tell each other about one port.
//! First come the small interface attribute types, which other families carry as well. Some of the
//! enumerations are plain 32-bit quantities (counters, errors, defects, timers), of 12 bytes like the others.

/// Identifies a connection.
struct zel_connection_id = 1040 {
    uint16  id
}

/// Identifies a shim by four numbers.
struct tib_c_shim_ids = 1041 {
    uint16  id_1
    uint16  id_2
    uint16  id_3
    uint16  id_4
}

/// Interface type.
enum ift = 1058

/// Encapsulation of an interface.
enum if_enctype = 1059

/// Describes the hardware of an interface: eight numbers, the latter four signed, and the interface type.
struct hw_info = 1043 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
    int32   value_5
    int32   value_6
    int32   value_7
    int32   value_8
    ift     interface_type
}

/// Interface type and encapsulation that an interface's hardware is configured for.
struct hw_config = 1044 {
    ift         interface_type
    uint16      value
    if_enctype  encapsulation
}

/// Software description of an interface.
enum sw_info = 1045

/// Reason for an event on an interface, such as a link going down.
enum if_reason = 1060

enum if_command = 1062

/// How the creation of an interface went.
enum if_create_status = 1063

/// Limit on the bytes that an interface receives.
struct if_rxbytes = 1046 {
    uint16  limit
}

enum if_cdc = 1064

/// Where a loopback sits.
enum loop_loc = 1065

/// Direction that a loopback faces.
enum loop_dir = 1066

/// Where an interface takes its clock from.
enum clock_src = 1241

/// 32-bit timer.
enum if_timer = 1047

/// 64-bit timer.
struct if_timer_long = 1048 {
    uint64  timer
}

/// A pair of accounting values.
struct if_acc = 1049 {
    uint32  value_1
    uint32  value_2
}

/// 32-bit error counter.
enum if_error = 1050

/// Defect value, a plain 32-bit number.
enum if_defect = 1051

/// 32-bit counter.
enum if_count = 1052

/// 64-bit counter.
struct if_count_long = 1053 {
    uint64  counter
}

/// Response about an interface.
struct if_resp = 1054 {
    uint16  value_1
    uint16  value_2
}

/// Result of an operation on an interface.
enum if_result = 1055

/// Bandwidth of an interface.
enum if_bw = 1056

/// Clock rate of an interface.
enum if_clkrate = 1057

/// Administrative state of an interface.
enum zel_if_admin_state = 1068

/// State of the control plane's descriptor of an interface.
enum zel_rpx_idb_state = 1069

enum zel_log_event_flag = 1070
