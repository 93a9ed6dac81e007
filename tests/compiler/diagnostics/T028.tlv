dynamic bytes led_name counted by uint16
struct led_control = 1357 {
    uint16    length
    led_name  name
    uint8     count
    led_name  text
}
