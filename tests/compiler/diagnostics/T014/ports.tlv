message led_color { uint16 value }
