//! Quality of service of a physical-layer interface module (PLIM): how the control plane sets packet
//! classification, pause and scheduling on a port.
