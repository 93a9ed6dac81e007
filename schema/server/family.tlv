//! Server modules: what the control plane exchanges with a plug-in module that hosts a server and a
//! management controller of the server's own.
