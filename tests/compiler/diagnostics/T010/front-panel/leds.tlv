// The name has a hyphen.
enum led_mode = 1363
