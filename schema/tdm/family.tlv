//! T1/E1, T3/E3 and serial interfaces, and circuit emulation: configuration, tests, clocks, statistics.
//! Commands (_cmd_), requests (_req_) and configuration go from the control plane to the module; updates
//! (_update_, _upd_), responses (_resp_) and reports come back.
