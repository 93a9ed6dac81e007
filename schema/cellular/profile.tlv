//! Profiles of a cellular modem: addressing and credentials, quality of service, DNS and TFT. The same record
//! answers a get request and is the body of a set request.

/// GPRS quality of service.
struct zel_api_gprs_qos = 1487 {
    uint8   value_1
    uint8   value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
    uint16  value_6
    uint16  value_7
}

/// UMTS quality of service.
struct zel_api_umts_qos = 1488 {
    uint8   value_1
    uint8   value_2
    uint8   value_3
    uint16  value_4
    uint16  value_5
    uint16  value_6
    uint16  value_7
    uint16  value_8
    uint16  value_9
    uint16  value_10
    uint16  value_11
    uint16  value_12
    uint16  value_13
    uint16  value_14
}

/// Addressing, APN and credentials of a profile. To the codecs the passwords are bytes like any others.
struct zel_cwan_prof_info_basic = 1519 {
    uint8       value_1
    uint8       value_2
    uint8       value_3
    uint8       value_4
    uint8       value_5
    uint8       value_6
    uint8       value_7
    uint16      value_8
    uint16      value_9
    uint16      value_10
    uint16      value_11
    uint32      value_12
    uint32      value_13
    uint32      value_14
    bytes[17]   pdp_address
    bytes[101]  apn
    bytes[33]   username
    bytes[33]   password
    bytes[70]   encrypted_password as zel_cwan_prof_info_basic_encrypt_password_array
    bytes[31]   config_label
}

/// Two UMTS and two GPRS quality-of-service records; only their order tells those of one kind apart.
struct zel_cwan_prof_info_qos = 1520 {
    zel_api_umts_qos  umts_qos_1
    zel_api_umts_qos  umts_qos_2
    zel_api_gprs_qos  gprs_qos_1
    zel_api_gprs_qos  gprs_qos_2
}

/// Primary and secondary DNS of a profile.
struct zel_cwan_prof_info_dns = 1521 {
    uint8       value_1
    bytes[513]  primary_dns
    uint8       value_2
    bytes[513]  secondary_dns
}

/// TFT of a profile, with source address and mask.
struct zel_cwan_prof_info_tft = 1522 {
    uint8      value_1
    uint8      value_2
    uint8      value_3
    uint8      value_4
    bytes[17]  source_address
    uint8      value_5
    uint16     value_6
    uint16     value_7
    uint16     value_8
    uint16     value_9
    uint32     value_10
    uint8      value_11
    uint8      value_12
    uint32     value_13
    bytes[17]  source_address_mask as zel_cwan_prof_info_tft_source_add_mask_array
}

/// All parts of a profile.
struct zel_prof_info = 1523 {
    zel_cwan_prof_info_basic  basic
    zel_cwan_prof_info_qos    qos
    zel_cwan_prof_info_dns    dns
    zel_cwan_prof_info_tft    tft
}

/// Profile, with five numbers.
struct zel_cwan_gsm_api_profile_msg = 1524 {
    uint16         value_1
    uint8          value_2
    uint8          value_3
    zel_prof_info  prof_info
    uint32         value_4
    uint16         value_5
}
