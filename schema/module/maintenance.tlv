//! Upkeep of a module: password reset, transceiver enable, power-off override and maintenance. These messages
//! carry a session header, but no interface identifier.

import "../common/session.tlv"

/// Password reset: two numbers and a flag.
struct pwd_reset_info = 1297 {
    uint8        value_1
    uint8        value_2
    zel_boolean  flag
}

/// Transceiver enable: two numbers and a flag.
struct xcvr_enable_info = 1298 {
    uint8        value_1
    uint8        value_2
    zel_boolean  flag
}

/// Admission of third-party transceivers.
message allow_3rd_party_xcvr_message { app_sess_hdr session  xcvr_enable_info enable_info }

/// Password reset of a module.
message module_pwd_reset_message { app_sess_hdr session  pwd_reset_info reset_info }

/// Power-off override: three numbers.
struct override_power_off_module_info = 1448 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
}

/// Power-off override of a module.
message override_power_off_module_message {
    app_sess_hdr                    session
    override_power_off_module_info  override_info
}

/// Maintenance: three numbers.
struct kavu_maintenance_info = 1725 {
    uint8   value_1
    uint8   value_2
    uint32  value_3
}

/// Maintenance of a module.
message cm_maintenance_message { app_sess_hdr session  kavu_maintenance_info maintenance_info }
