//! A family and a type that the library has.

/// Another.
struct zel_led_control = 40000 { uint16 slot }
