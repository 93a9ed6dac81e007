struct led_control = 1357 {
    uint16* slot
    uint16 port µ
}
# the colour
/* C has
   such remarks */ enum led_color = 1362 { off = -1 }
/* this one never ends
