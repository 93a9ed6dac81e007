enum led_color = 1362
