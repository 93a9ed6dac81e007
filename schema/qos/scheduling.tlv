//! Pause and ingress scheduling.

import "../common/session.tlv"

/// Pause settings, four numbers.
struct ether_set_pause = 1273 {
    uint8  value_1
    uint8  value_2
    uint8  value_3
    uint8  value_4
}

/// Priority flag of ingress scheduling.
enum zel_qos_priority_flag = 1274

/// Ingress scheduling: a priority flag and three numbers.
struct qos_ingress_sched = 1275 {
    zel_qos_priority_flag  priority_flag
    uint32                 value_1
    uint16                 value_2
    uint32                 value_3
}

/// Pause settings to set on a port.
message ether_pause_set_message { app_sess_hdr session  ifid interface  ether_set_pause set_pause }

/// Configuration of the ingress scheduling of a port.
message ingress_sched_config_message { app_sess_hdr session  ifid interface  qos_ingress_sched ingress_sched }
