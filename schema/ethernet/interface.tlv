//! Interface attributes that the messages of several families carry. Some of the enumerations are plain
//! 32-bit quantities (counters, errors, defects, timers), of 12 bytes like the others.

/// Connection identifier.
struct zel_connection_id = 1040 {
    uint16  id
}

/// Shim identifiers, four numbers.
struct tib_c_shim_ids = 1041 {
    uint16  id_1
    uint16  id_2
    uint16  id_3
    uint16  id_4
}

/// Interface type.
enum ift = 1058

/// Hardware description of an interface: four unsigned numbers, four signed ones, and the interface type.
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

/// Encapsulation of an interface.
enum if_enctype = 1059

/// Hardware configuration of an interface: its type, a number and its encapsulation.
struct hw_config = 1044 {
    ift         interface_type
    uint16      value
    if_enctype  encapsulation
}

/// Software description of an interface.
enum sw_info = 1045  // tlvc: W002 because no type of any family holds it

/// Reason for an event on an interface, such as a link going down.
enum if_reason = 1060

/// Command for an interface.
enum if_command = 1062

/// Creation status of an interface.
enum if_create_status = 1063

/// Limit on the bytes that an interface receives.
struct if_rxbytes = 1046 {
    uint16  limit
}

enum if_cdc = 1064  // tlvc: W003 because nothing tells what it is for

/// Where a loopback sits.
enum loop_loc = 1065

/// Direction that a loopback faces.
enum loop_dir = 1066

/// Clock source of an interface.
enum clock_src = 1241

/// 32-bit timer.
enum if_timer = 1047

/// 64-bit timer.
struct if_timer_long = 1048 {
    uint64  timer
}

/// Pair of accounting values.
struct if_acc = 1049 {
    uint32  value_1
    uint32  value_2
}

/// Counter of errors, of 32 bits.
enum if_error = 1050

/// Defect value, a plain 32-bit number.
enum if_defect = 1051  // tlvc: W002 because no type of any family holds it

/// 32-bit counter.
enum if_count = 1052

/// 64-bit counter.
struct if_count_long = 1053 {
    uint64  counter
}

/// Response about an interface, in two numbers.
struct if_resp = 1054 {
    uint16  value_1
    uint16  value_2
}

/// Result of an operation on an interface.
enum if_result = 1055  // tlvc: W002 because no type of any family holds it

/// Bandwidth of an interface.
enum if_bw = 1056

/// Clock rate of an interface.
enum if_clkrate = 1057

/// Administrative state of an interface.
enum zel_if_admin_state = 1068

/// State of the control plane's interface descriptor.
enum zel_rpx_idb_state = 1069

/// Log-event flag of an interface.
enum zel_log_event_flag = 1070
