//! Ethernet switch module: what the control plane and the module's driver tell each other about addresses,
//! multicast, queues, ports and VLANs.
