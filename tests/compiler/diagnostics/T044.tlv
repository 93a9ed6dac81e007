enum port = 1301 { speed_slow = 1 }
enum port_speed = 1302 {
    slow = 1
    fast = 2
}

struct relay = 1303 {
    uint32  port_speed_fast
}
