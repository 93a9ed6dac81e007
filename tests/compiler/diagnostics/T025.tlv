bytes led_name[65536]
array led_array of uint16[65535]
array led_table of uint32[18446744073709551616]
