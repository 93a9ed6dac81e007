//! Relays of voice ports, with every kind of type there is.
