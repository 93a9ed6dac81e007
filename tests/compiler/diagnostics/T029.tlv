union led_value by uint32 kind { 1: uint8 octet }
