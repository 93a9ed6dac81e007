enum led_kind = 1362
union led_value by led_kind kind in led_control { 1: uint8 octet }
struct led_control = 1357 {
    led_kind   kind
    led_value  value
}
struct led_state = 1358 {
    led_kind   kind
    led_value  value
}
union led_mode by led_kind kind in led_state { 1: uint8 octet }
union led_color by led_kind kind in led_request { 1: uint8 octet }
message led_request { led_kind kind }
