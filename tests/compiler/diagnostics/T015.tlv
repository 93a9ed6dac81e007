enum led_color = 1362
struct led_control = 1357 { led_color color }
struct led_state = 1362 { led_color color }
