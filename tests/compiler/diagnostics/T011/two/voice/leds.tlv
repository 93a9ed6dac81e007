enum led_mode = 1363
