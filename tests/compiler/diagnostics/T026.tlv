enum led_kind = 1362
dynamic array led_kinds of led_kind counted by uint32
dynamic bytes led_name counted by uint64
dynamic bytes led_text counted by led_kind
