enum zel_led_color = 1362
struct zel_led_control = 1357 {
    uint16         slot
    zel_led_colour  color
    nothing_like_it  port
}
array led_array of zel_led_contrlo[4]
union led_union by zel_led_kind kind { 1: uin8 octet }
struct led_habits = 1358 {
    unsigned int        a
    unsigned long long  b  long c  short d
    struct zel_led_color e
    string  f
    double  g
    u8      i
    app_sess_hdr  session
    app_ses_hdr   other
}
