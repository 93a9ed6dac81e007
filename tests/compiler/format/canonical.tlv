// Licence of the file.
//! Front-panel   control.
//!
//! Of voice ports.

import "../common/session.tlv"  // for app_sess_hdr
import "../common/ids.tlv"

import "types.tlv"

// Modes.
enum a_mode = 1001
enum b_mode = 1002  // the other

enum c_mode = 1003

/// Documented.
enum d_mode = 1004

enum e_mode = 1005

prefix acme_

reserved 0x7E8, 2025 to 2040  // gone
reserved 3000, 3010, 3020, 3030, 3040, 3050, 3060, 3070, 3080, 3090, 3100, 3110, 3120, 3130, 3140, 3150, 3160,
    3170, 3180 to 3189

enum f_mode = 0x3ee { on = 1  reserved 2, 4 to 0x10  to = 20 }

enum g_mode = 1007 {
    on  = 1
    reserved 2, 3  // two
    off = 0
}

bytes serial[32]

array words of uint16[8]
array halves of uint16[8]

dynamic array list of item counted by uint8
dynamic bytes text counted by uint16

struct led_control = 1357 {
    uint16         slot
    uint16         port                      // both counted from 0
    // Before a group.

    /// The colour.
    ///
    ///   indented
    zel_led_color  color @zero_count @other  // trailing

    uint8          x
    bytes[0x21]    name as title @zero_count
    item[8]        items
    uint16         count
    dynamic bytes  notes counted by uint16   // in place
    dynamic array  others of item counted by uint8

    // Last words.
}

message short_request { app_sess_hdr session  ifid interface  led_control control }

message long_request {
    app_sess_hdr  session
    ifid          interface
    led_control   control
    led_control   control_of_the_second
}

message noted_request {
    app_sess_hdr  session  // who
    ifid          interface
}

message empty_request key 017 { }

// remark within a header
union value by kind which in holder {  // opens
        1: ipv4_addr  ipv4 @end_by_length
    2, 30: uint8      octet  // two values

    /// The third.
      400: ipv6_addr  ipv6
    1000, 1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 1009, 1010, 1011, 1012, 1013, 1014, 1015, 1016,
    1017, 1018, 1019: uint8  rest  //last
}  // closes
// The end.
