//! Weighted round-robin queues and port priority.

import "../common/session.tlv"

/// Queue map, by class of service.
struct zel_wrrq_cosmap = 1637 {
    uint32[8]  qmap
}

/// Scheduling mode of weighted round-robin queues.
enum zel_wrrq_sched_mode = 1635

/// Scheduling mode and weights of the queues, with a number.
struct zel_wrrq_bandw = 1636 {
    zel_wrrq_sched_mode  sched_mode
    /// Separate from the array's count.
    uint32               value
    uint32[8]            weight
}

/// Configuration of the queue map of a port.
message wrr_queue_cfg_cosmap_message { app_sess_hdr session  ifid interface  zel_wrrq_cosmap wrrq_cosmap }

/// Configuration of the queue bandwidths of a port.
message wrr_queue_cfg_bandw_message { app_sess_hdr session  ifid interface  zel_wrrq_bandw wrrq_bandw }

/// Priority and a flag.
struct zel_switchport_prio = 1638 {
    uint8        priority
    zel_boolean  flag
}

/// Priority of a port.
message switch_port_priority_message {
    app_sess_hdr         session
    ifid                 interface
    zel_switchport_prio  switchport_prio
}
