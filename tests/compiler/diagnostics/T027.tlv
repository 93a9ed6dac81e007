enum led_kind = 1362
dynamic bytes led_name counted by uint16
struct led_control = 1357 {
    led_name  name
    led_kind  count
    led_name  text
}
