reserved 40002, 40010 to 40020
enum state = 40002 { open = 4  closed = 1  stuck = 9  reserved 4, 0x7 to 9  lost = 10 }
struct port = 0x9c54 { state of_it }
struct line = 40021 { state of_it }
