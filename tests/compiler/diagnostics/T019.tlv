enum led_kind = 1362
struct led_control = 1357 { }
message led_request { }
union led_value by led_kind kind {
    // none yet
}
