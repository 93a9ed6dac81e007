//! Bit-error-rate test configurations, and strings of maintenance data link (MDL) and trail trace (TTB).

/// Pattern of a bit-error-rate test.
enum zel_serial_bert_pattern = 1090

/// Bit-error-rate test on a T3/E3 interface.
struct zel_serial_bert_cfg = 1071 {
    zel_serial_bert_pattern  pattern
    uint16                   value_1
    uint32                   value_2
    uint8                    value_3
    uint32                   value_4
    uint32                   value_5
}

/// Type of a bit-error-rate test.
enum zel_serial_bert_type = 1091

/// Bit-error-rate test of a chosen type, on a T1/E1 line.
struct zel_serial_extended_bert_cfg = 1072 {
    zel_serial_bert_pattern  pattern
    zel_serial_bert_type     type
    uint16                   value_1
    uint32                   value_2
}

/// Identifier in the maintenance data link. Stands alone: no other type holds it.
enum zel_t3_mdl_id = 1094  // tlvc: W002 because no type of any family holds it

/// Strings of the maintenance data link.
struct zel_serial_mdl_str = 1073 {
    bytes[11]  eic
    bytes[12]  lic
    bytes[11]  fic
    bytes[7]   unit
    bytes[39]  fi
    bytes[39]  port_no
    bytes[39]  gen_no
}

/// Strings of the trail trace.
struct zel_serial_ttb_str = 1074 {
    bytes[3]  country
    bytes[4]  soperator
    bytes[4]  snode
    bytes[4]  rnode
    bytes[2]  x
    bytes[4]  serial
}
