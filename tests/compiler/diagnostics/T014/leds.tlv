enum led_color = 1362
enum uint16 = 1363
struct led_color = 1364 { uint16 value }
