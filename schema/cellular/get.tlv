//! Get requests to a cellular modem.

/// Parameters of a request for a profile.
struct zel_cwan_gsm_api_profile_get = 1510 {
    uint16  value_1
    uint8   value_2
    uint8   value_3
    uint16  value_4
}

/// Parameters of a request for the IP address of a profile.
struct zel_cwan_gsm_api_profile_ip_addr_get = 1511 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
}

/// Parameters of a request for the total byte counts.
struct zel_cwan_gsm_api_total_byte_get = 1512 {
    uint32  value_1
    uint32  value_2
}

/// Parameter of a request for a short message.
enum zel_cwan_gsm_api_sms_msg_get = 1513

/// Kind of a get request.
enum zel_cwan_msg_get_type = 1509

/// Parameters of a get request. One byte stands in for the many kinds that have none; above 30 nothing is
/// carried.
union zel_cwan_msg_get_msg_type_union by zel_cwan_msg_get_type type {
    0, 1, 3, 4, 5, 7, 8, 9, 10, 11, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 26, 27, 28, 29,
    30: uint8  value
     2: zel_cwan_gsm_api_profile_get          profile_get
     6: zel_cwan_gsm_api_profile_ip_addr_get  profile_ip_addr_get
    12: zel_cwan_gsm_api_total_byte_get       total_byte_get
    25: zel_cwan_gsm_api_sms_msg_get          sms_msg_get
}

/// Get request: its kind and its parameters.
struct zel_cwan_msg_get_msg = 1514 {
    zel_cwan_msg_get_type            type
    zel_cwan_msg_get_msg_type_union  body
}
