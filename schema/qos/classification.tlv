//! Class-of-service classification by VLAN and by QinQ pair.

import "../common/session.tlv"
import "plim.tlv"

/// Classification of one VLAN: its type and four numbers.
struct ether_vlan_config_classify = 1269 {
    uint16                  value_1
    zel_plim_classify_type  classify_type
    uint8                   value_2
    uint8                   value_3
    uint8                   value_4
}

/// Classification of one QinQ pair: its type and seven numbers.
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

/// Classification of all VLANs, as a bitmap.
struct ether_all_vlan_config_classify = 1271 {
    /// Separate from the array's count.
    uint16       value
    uint32[450]  cos_bitmap
}

/// Classification of all QinQ pairs, as a bitmap.
struct ether_all_qinq_config_classify = 1272 {
    /// Separate from the array's count.
    uint16       value
    uint64[225]  cos_bitmap
}

/// Class-of-service indexes of dot1q, behind a number.
struct ether_vlan_bmap_table_arr = 1355 {
    /// Separate from the array's count.
    uint16      value
    bytes[450]  cos_index
}

/// Class-of-service indexes of QinQ, behind a number.
struct ether_qinq_bmap_table_arr = 1356 {
    /// Separate from the array's count.
    uint16      value
    bytes[225]  cos_index
}

/// Class-of-service configuration of one VLAN.
message ether_vlan_cos_config_message {
    app_sess_hdr                session
    ifid                        interface
    ether_vlan_config_classify  vlan_config_classify
}

/// Class-of-service configuration of one QinQ pair.
message ether_qinq_cos_config_message {
    app_sess_hdr                session
    ifid                        interface
    ether_qinq_config_classify  qinq_config_classify
}

/// Class-of-service configuration of all VLANs.
message ether_all_vlan_cos_config_message {
    app_sess_hdr                    session
    ifid                            interface
    ether_all_vlan_config_classify  all_vlan_config_classify
}

/// Class-of-service configuration of all QinQ pairs.
message ether_all_qinq_cos_config_message {
    app_sess_hdr                    session
    ifid                            interface
    ether_all_qinq_config_classify  all_qinq_config_classify
}

/// Class-of-service index table of dot1q.
message dot1q_index_bundle_message { app_sess_hdr session  ifid interface  ether_vlan_bmap_table_arr table }

/// Class-of-service index table of QinQ.
message qinq_index_bundle_message { app_sess_hdr session  ifid interface  ether_qinq_bmap_table_arr table }
