//! PLIM packet classification, and virtual circuits (VC).

import "../common/session.tlv"

/// Type of a classification by the PLIM.
enum zel_plim_classify_type = 1276

/// Layer 2 template type of a classification or of a VC.
enum zel_l2_template_type = 1265

/// Classification on a port; only their order tells its three types apart.
struct plim_config_classify = 1266 {
    uint8                   value_1
    uint8                   value_2
    uint8                   value_3
    zel_plim_classify_type  classify_type_1
    zel_plim_classify_type  classify_type_2
    zel_plim_classify_type  classify_type_3
    uint64                  value_4
    uint8                   value_5
    uint64                  value_6
    uint8                   value_7
    zel_boolean             flag
    zel_l2_template_type    l2_template_type
    uint16                  value_8
    uint16                  value_9
}

/// One VC.
struct plim_vc_cfg = 1267 {
    uint32                value_1
    zel_l2_template_type  l2_template_type
    uint8                 value_2
}

/// VCs in bulk.
struct plim_qos_vc_info = 1268 {
    /// Number of VCs: 16 bits of it, where other bundles keep 8.
    uint16         count
    dynamic array  vc_info of plim_vc_cfg counted by uint16
}

/// Classification configuration of a port.
message plim_cos_config_message { app_sess_hdr session  ifid interface  plim_config_classify config_classify }

/// VC information of a port.
message plim_qos_vc_bundle_message { app_sess_hdr session  ifid interface  plim_qos_vc_info qos_vc_info }
