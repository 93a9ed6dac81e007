//! Ports of a switch module: state, MAC learning, mode, tagging and protection.

import "../common/session.tlv"

enum mac_learn_mode = 1640

/// State of a port with the way it learns MAC addresses.
struct port_state_update = 1639 {
    zel_boolean     flag
    mac_learn_mode  learn_mode
}

/// Carries the state and the MAC learning mode of a port, for default host access.
message esg_default_host_access_message {
    app_sess_hdr       session
    ifid               interface
    port_state_update  port_state_update
}

enum port_tagging_type = 1615

/// Mode and tagging of a port.
struct port_mode_config = 1616 {
    uint16             value
    port_tagging_type  tagging_type
}

/// Sets the mode and the tagging of a port.
message switch_port_mode_message { app_sess_hdr session  ifid interface  port_mode_config port_mode_config }

/// Whether a port is protected.
struct zel_port_protected = 1620 {
    zel_boolean  is_protected
}

/// Sets whether a port is protected.
message switch_port_protected_config_message {
    app_sess_hdr        session
    ifid                interface
    zel_port_protected  port_protected
}
