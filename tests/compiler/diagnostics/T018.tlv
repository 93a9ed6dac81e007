enum led_kind = 1362
struct led_control = 1357 {
    uint16  slot
    uint16  port
    uint16  slot
}
union led_value by led_kind kind {
    1: uint8   kind
}
struct led_setting = 1358 {
    uint8     mode
    led_kind  kind
    led_mode  value
}
union led_mode by led_kind kind in led_setting {
    1: uint8  kind
}
