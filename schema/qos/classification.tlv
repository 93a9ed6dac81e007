//! Quality of service of a physical-layer interface module (PLIM): how the control plane sets it on a port,
//! beginning with classes of service by VLAN and by QinQ pair.

import "../common/session.tlv"
import "plim.tlv"

/// Classification for one VLAN.
struct ether_vlan_config_classify = 1269 {
    uint16                  value_1
    zel_plim_classify_type  classify_type
    uint8                   value_2
    uint8                   value_3
    uint8                   value_4
}

/// Classification for one QinQ pair.
struct ether_qinq_config_classify = 1270 {
    uint16                  value_1
    uint16                  value_2
    uint16                  value_3
    uint8                   value_4
    zel_plim_classify_type  classify_type
    uint8                   value_5
    uint8                   value_6
    uint8                   value_7
}

array ether_all_vlan_config_classify_cos_bitmap_array of uint32[450]

/// Classification for all VLANs, as a bitmap of up to 450 words.
struct ether_all_vlan_config_classify = 1271 {
    uint16                                           value
    ether_all_vlan_config_classify_cos_bitmap_array  cos_bitmap
}

array ether_all_qinq_config_classify_cos_bitmap_array of uint64[225]

/// Classification for all QinQ pairs, as a bitmap of up to 225 words of 64 bits.
struct ether_all_qinq_config_classify = 1272 {
    uint16                                           value
    ether_all_qinq_config_classify_cos_bitmap_array  cos_bitmap
}

bytes ether_vlan_bmap_table_arr_cos_index_array[450]

/// Table of class-of-service indexes for dot1q, up to 450 bytes.
struct ether_vlan_bmap_table_arr = 1355 {
    uint16                                     value
    ether_vlan_bmap_table_arr_cos_index_array  cos_index
}

bytes ether_qinq_bmap_table_arr_cos_index_array[225]

/// Table of class-of-service indexes for QinQ, up to 225 bytes.
struct ether_qinq_bmap_table_arr = 1356 {
    uint16                                     value
    ether_qinq_bmap_table_arr_cos_index_array  cos_index
}

/// Configures the class of service of one VLAN.
message ether_vlan_cos_config_message {
    app_sess_hdr                session
    ifid                        interface
    ether_vlan_config_classify  vlan_config_classify
}

/// Configures the class of service of one QinQ pair.
message ether_qinq_cos_config_message {
    app_sess_hdr                session
    ifid                        interface
    ether_qinq_config_classify  qinq_config_classify
}

/// Configures the classes of service of all VLANs.
message ether_all_vlan_cos_config_message {
    app_sess_hdr                    session
    ifid                            interface
    ether_all_vlan_config_classify  all_vlan_config_classify
}

/// Configures the classes of service of all QinQ pairs.
message ether_all_qinq_cos_config_message {
    app_sess_hdr                    session
    ifid                            interface
    ether_all_qinq_config_classify  all_qinq_config_classify
}

/// Carries the dot1q table of class-of-service indexes.
message dot1q_index_bundle_message { app_sess_hdr session  ifid interface  ether_vlan_bmap_table_arr table }

/// Carries the QinQ table of class-of-service indexes.
message qinq_index_bundle_message { app_sess_hdr session  ifid interface  ether_qinq_bmap_table_arr table }
