// What clashes with the other is not told of.
enum led_color = 1362
