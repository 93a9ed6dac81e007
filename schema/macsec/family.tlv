//! MACsec (IEEE 802.1AE) engine of a port: how the control plane drives it and reads it back. A MAC security
//! entity (SecY) has secure channels (SC), and those have secure associations (SA).
