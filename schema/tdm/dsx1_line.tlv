//! Alarms, performance-monitoring tables and bit-error-rate tests of T1/E1 lines.

/// Alarm of a T1/E1 line.
enum zel_dsx1_alarm = 1080

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

/// Performance-monitoring table of a line in the ANSI form.
struct zel_t1e1_TableTypeANSI = 1076 {
    uint16  counter_1
    uint16  counter_2
    uint16  counter_3
    uint16  counter_4
}

/// Performance-monitoring table of a line in the FE form.
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

/// State of a bit-error-rate test on a T1/E1 line.
enum zel_dsx_bert_state = 1099

/// State of a bit-error-rate test, and six numbers.
struct dsx_bert_info = 1078 {
    uint32              value_1
    uint32              value_2
    uint32              value_3
    uint32              value_4
    uint32              value_5
    uint32              value_6
    zel_dsx_bert_state  state
}
