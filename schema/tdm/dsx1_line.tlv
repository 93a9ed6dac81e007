//! What describes a T1/E1 line: its enumerations, performance-monitoring tables and bit-error-rate test.

enum zel_dsx1_port_type = 1079
enum zel_dsx1_alarm = 1080
enum zel_dsx1_homologation_type = 1081
enum zel_dsx1_cable_type = 1082
enum zel_dsx1_cable_length = 1083
enum zel_dsx1_pulse_type = 1084
enum zel_dsx1_pmc_cable_length = 1085
enum zel_dsx1_gain_type = 1086
enum zel_dsx1_fdl_type = 1087
enum zel_dsx1_linecode_type = 1088
enum zel_dsx1_service_type = 1089
enum zel_ds0_speed = 1095
enum zel_t1e1_framing = 1096
enum zel_t1e1_loopback = 1097
enum zel_t1e1_remote_loop_status = 1098
enum zel_dsx_bert_state = 1099

/// Performance-monitoring table of a line. Its seventh number is signed.
struct zel_t1e1_TableType = 1075 {
    uint32  counter_1
    uint32  counter_2
    uint16  counter_3
    uint16  counter_4
    uint16  counter_5
    uint16  counter_6
    int16   counter_7
    uint16  counter_8
    uint16  counter_9
    uint16  counter_10
    uint16  counter_11
    uint16  counter_12
}

/// Performance-monitoring table of a line, the ANSI part.
struct zel_t1e1_TableTypeANSI = 1076 {
    uint16  counter_1
    uint16  counter_2
    uint16  counter_3
    uint16  counter_4
}

/// Performance-monitoring table of a line's far end.
struct zel_t1e1_FETableType = 1077 {
    uint32  counter_1
    uint32  counter_2
    uint16  counter_3
    uint16  counter_4
    uint16  counter_5
    uint16  counter_6
    uint16  counter_7
    uint16  counter_8
    uint16  counter_9
    uint16  counter_10
    uint16  counter_11
    uint16  counter_12
    uint16  counter_13
}

/// State of a bit-error-rate test.
struct dsx_bert_info = 1078 {
    uint32              value_1
    uint32              value_2
    uint32              value_3
    uint32              value_4
    uint32              value_5
    uint32              value_6
    zel_dsx_bert_state  state
}

enum zel_dsx1_line_termination = 1236
