enum port = 1301 { speed_slow = 1 }
enum port_speed = 1302 {
    slow = 1
    fast = 2
}

struct relay = 1303 {
    uint32  port_speed_fast
}

union a_b by port which { 1: relay c }
union a by port which { 1: relay b_c }
