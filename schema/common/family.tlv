//! Types that many families share: the session header and interface identity, strings and names, addresses,
//! and small enumerations for protocols, directions, actions and states.
