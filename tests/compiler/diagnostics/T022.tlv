enum led_kind = 1362
array led_octets of uint8[16]
array led_text of char[8]
dynamic array led_words of uint16 counted by uint8
dynamic array led_tail of int8 counted by uint16
array led_table of led_octets[4]
union led_value by led_kind kind { 1: uint8 octet }
array led_values of led_value[4]
