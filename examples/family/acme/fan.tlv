//! The fans of Acme's modules.

import "common/session.tlv"

prefix acme_

reserved 32773  // acme_fan_curve, which only the first modules sent

/// What a fan does.
enum acme_fan_state = 32768 { stopped = 0  running = 1  failed = 2 }

/// How fast a fan turns.
struct acme_fan_speed = 32769 {
    uint16  rpm
    uint16  rpm_wanted
}

/// What there is to report depends on what the fan does.
union acme_fan_detail by acme_fan_state state {
    running: acme_fan_speed    speed
     failed: acme_fan_failure  failure
}

/// Why a fan has failed.
struct acme_fan_failure = 32770 {
    uint16         count
    /// In the words of its controller.
    dynamic bytes  reason counted by uint16 as acme_fan_reason
}

/// A fan of a module.
struct acme_fan = 32771 {
    uint8            tray
    acme_fan_state   state
    acme_fan_detail  detail
}

/// The fans of a module.
struct acme_fan_list = 32772 {
    uint8          count
    dynamic array  fans of acme_fan counted by uint8 as acme_fans
}

/// How the fans of a module are; sent when one of them changes.
message acme_fan_report_message key 17 { app_sess_hdr session  ifid interface  acme_fan_list list }
