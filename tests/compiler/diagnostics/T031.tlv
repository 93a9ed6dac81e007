enum led_kind = 1362
enum led_mode = 1363
union led_value by led_kind kind { 1: uint8 octet }
struct led_control = 1357 {
    led_mode   kind
    led_value  value
    led_kind   mode
    led_value  other
}
