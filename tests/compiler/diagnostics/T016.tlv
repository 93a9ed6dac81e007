enum led_color = 1000
enum led_mode = 65536
struct led_control = 99999999999999999999999 { led_color color }
