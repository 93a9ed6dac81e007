enum led_color = 0x552
bytes serial_number[32k]
