//! Module management: how the control plane manages a plug-in IO module as a whole, and a few small kinds of
//! module. Many messages leave out the session header, the interface identifier, or both.
