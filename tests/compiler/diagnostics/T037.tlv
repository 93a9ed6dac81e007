enum led_kind = 1362
struct led_control = 1357 {
    led_kind   kind
    led_value  value
}
union led_value by led_kind kind {
    1: led_list  list
}
struct led_list = 1358 {
    uint8     count
    led_array  leds
}
dynamic array led_array of led_control counted by uint8
struct led_group = 1359 {
    led_group group
}
