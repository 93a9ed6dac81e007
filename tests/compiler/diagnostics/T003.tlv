enum led_color = 0x552 { red = 0X0F  green = 0x }
bytes serial_number[32k]
struct led = 0xG1 { bytes[0xFFFFF] text }
