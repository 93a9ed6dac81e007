//! Weighted round-robin queues and port priority of a switch module.

import "../common/session.tlv"

enum zel_wrrq_sched_mode = 1635

array zel_wrrq_cosmap_qmap_array of uint32[8]

/// Map of up to eight entries between classes of service and queues.
struct zel_wrrq_cosmap = 1637 {
    zel_wrrq_cosmap_qmap_array  qmap
}

array zel_wrrq_bandw_weight_array of uint32[8]

/// Bandwidth of the queues: scheduling mode and up to eight weights.
struct zel_wrrq_bandw = 1636 {
    zel_wrrq_sched_mode          sched_mode
    uint32                       value
    zel_wrrq_bandw_weight_array  weight
}

/// Sets the queue map.
message wrr_queue_cfg_cosmap_message { app_sess_hdr session  ifid interface  zel_wrrq_cosmap wrrq_cosmap }

/// Sets the bandwidth of the queues.
message wrr_queue_cfg_bandw_message { app_sess_hdr session  ifid interface  zel_wrrq_bandw wrrq_bandw }

/// Priority of a port.
struct zel_switchport_prio = 1638 {
    uint8        priority
    zel_boolean  flag
}

/// Sets the priority of a port.
message switch_port_priority_message {
    app_sess_hdr         session
    ifid                 interface
    zel_switchport_prio  switchport_prio
}
