//! Voice port modules, analog (FXS, FXO, E&M) and BRI, and the ISDN BRI controllers of voice and WAN modules.
//! Requests (_req_) go from the control plane to the module; responses (_resp_) and reports come back.
