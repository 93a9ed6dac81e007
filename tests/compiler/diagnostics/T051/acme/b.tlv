struct prefix = 40004 { uint8 prefix  uint8 reserved }
message reserved { prefix prefix  prefix reserved }
