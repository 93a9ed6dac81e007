//! Port state, MAC learning, mode, tagging and protection.

import "../common/session.tlv"

/// MAC learning mode of a port.
enum mac_learn_mode = 1640

/// Port state, as a flag, and MAC learning mode.
struct port_state_update = 1639 {
    zel_boolean     flag
    mac_learn_mode  learn_mode
}

/// Port state and MAC learning mode of a port, for default host access.
message esg_default_host_access_message {
    app_sess_hdr       session
    ifid               interface
    port_state_update  port_state_update
}

/// Tagging of a port.
enum port_tagging_type = 1615

/// Port mode and tagging: a number and the type of tagging.
struct port_mode_config = 1616 {
    uint16             value
    port_tagging_type  tagging_type
}

/// Mode and tagging of a switch port.
message switch_port_mode_message { app_sess_hdr session  ifid interface  port_mode_config port_mode_config }

/// Whether a port is protected.
struct zel_port_protected = 1620 {
    zel_boolean  is_protected
}

/// Configuration of a protected port.
message switch_port_protected_config_message {
    app_sess_hdr        session
    ifid                interface
    zel_port_protected  port_protected
}
