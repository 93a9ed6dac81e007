//! Network synchronization: how frequency and time are distributed between the control plane, the modules and
//! the timing cards. Some messages leave out the session header, the interface identifier, or both.
