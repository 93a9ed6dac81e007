//! What the modules of a box and the daemon that watches them tell each other.

import "common/session.tlv"

prefix watch_

/// Fingerprints of the messages that are sent here, of whatever family.
struct watch_fingerprints = 33001 {
    uint64  alarm
    uint64  vlans
    uint64  led
}

/// What each side sends before anything else.
message watch_hello_message key 1 { app_sess_hdr session  watch_fingerprints fingerprints }

/// What somebody should look at.
struct watch_alarm = 33002 {
    uint16         count
    dynamic bytes  text counted by uint16 as watch_text
}

/// Sent by a module when it needs somebody.
message watch_alarm_message key 2 { app_sess_hdr session  watch_alarm alarm }
