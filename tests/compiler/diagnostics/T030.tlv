enum led_kind = 1362
union led_value by led_kind kind { 1: uint8 octet }
struct led_control = 1357 {
    led_value  value
    uint32     kind
    led_value  other
}
