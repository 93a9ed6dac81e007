bytes led_name[0]
array led_array of uint16[0]
