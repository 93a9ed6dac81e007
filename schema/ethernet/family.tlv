//! Ethernet ports of an IO module: what the control plane and the port driver tell each other about one port.
//! Other families carry the interface attributes that are defined here, too.
