/// For the file itself.
import "session.tlv"
//! Front-panel control.

struct led_control = 1357 {
    uint16 slot /// counted from 0
    /// Nothing follows.
}
/// Nor here.
