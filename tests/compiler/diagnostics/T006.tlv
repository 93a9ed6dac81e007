struct led_control = 1357 {
    uint16 slot

/// What follows is read all the same.
struct led_state = 1358 {
    uint16 slot port
}
message led_request {
    led_control control
