//! Identity of a module: interface and base identifiers, CP/DP headers, and extended attributes.

import "../common/session.tlv"

/// Interface identifiers, seven numbers.
struct zel_kavu_intf_iid = 1295 {
    uint8   value_1
    uint8   value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
    uint16  value_6
    uint16  value_7
}

/// Base identifiers, two numbers.
struct zel_kavu_base_iid = 1296 {
    uint16  value_1
    uint16  value_2
}

/// Layer 2 header: MAC address and three numbers.
struct kavu_l2_hdr_info = 1299 {
    zel_mac_addr  mac_addr
    uint8         value_1
    uint16        value_2
    uint16        value_3
}

/// Five layer 2 headers, which only their order tells apart.
struct kavu_cpdp_hdr_info = 1300 {
    kavu_l2_hdr_info  l2_hdr_info_1
    kavu_l2_hdr_info  l2_hdr_info_2
    kavu_l2_hdr_info  l2_hdr_info_3
    kavu_l2_hdr_info  l2_hdr_info_4
    kavu_l2_hdr_info  l2_hdr_info_5
}

/// CP/DP headers of a module; has no interface identifier.
message kavu_cpdp_header_message { app_sess_hdr session  kavu_cpdp_hdr_info cpdp_hdr_info }

/// Attribute bytes, behind three numbers.
struct kavu_ext_attrib = 1301 {
    uint16         value_1
    uint16         value_2
    uint16         value_3
    /// Length of the attribute bytes, as the array has it: zero when a decoded array is missing.
    uint16         count
    dynamic bytes  ext_attrib counted by uint16 @zero_count
}

/// Interface identifiers of a module.
message zel_kavu_intf_iid_msg_message { app_sess_hdr session  ifid interface  zel_kavu_intf_iid intf_iid }

/// Base identifiers of a module.
message zel_kavu_base_iid_msg_message { app_sess_hdr session  ifid interface  zel_kavu_base_iid base_iid }

/// Extended attributes of a module; has no interface identifier.
message kavu_ext_attrib_msg_message { app_sess_hdr session  kavu_ext_attrib ext_attrib }
