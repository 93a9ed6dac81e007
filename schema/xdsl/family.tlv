//! xDSL line modules: configuration commands and requests from the control plane; notifications, statistics
//! and answers from the module.
