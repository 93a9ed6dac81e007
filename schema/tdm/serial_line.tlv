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

bytes zel_serial_mdl_str_eic_array[11]
bytes zel_serial_mdl_str_lic_array[12]
bytes zel_serial_mdl_str_fic_array[11]
bytes zel_serial_mdl_str_unit_array[7]
bytes zel_serial_mdl_str_fi_array[39]
bytes zel_serial_mdl_str_port_no_array[39]
bytes zel_serial_mdl_str_gen_no_array[39]

/// Strings of the maintenance data link.
struct zel_serial_mdl_str = 1073 {
    zel_serial_mdl_str_eic_array      eic
    zel_serial_mdl_str_lic_array      lic
    zel_serial_mdl_str_fic_array      fic
    zel_serial_mdl_str_unit_array     unit
    zel_serial_mdl_str_fi_array       fi
    zel_serial_mdl_str_port_no_array  port_no
    zel_serial_mdl_str_gen_no_array   gen_no
}

bytes zel_serial_ttb_str_country_array[3]
bytes zel_serial_ttb_str_soperator_array[4]
bytes zel_serial_ttb_str_snode_array[4]
bytes zel_serial_ttb_str_rnode_array[4]
bytes zel_serial_ttb_str_x_array[2]
bytes zel_serial_ttb_str_serial_array[4]

/// Strings of the trail trace.
struct zel_serial_ttb_str = 1074 {
    zel_serial_ttb_str_country_array    country
    zel_serial_ttb_str_soperator_array  soperator
    zel_serial_ttb_str_snode_array      snode
    zel_serial_ttb_str_rnode_array      rnode
    zel_serial_ttb_str_x_array          x
    zel_serial_ttb_str_serial_array     serial
}
