//! Cellular WAN modem messages between a control-plane process and a cellular modem module: the modem API,
//! firmware upgrade, AT and shell commands, GPS data and card management.
