enum free = 1301
enum tlvmsg_mode = 1302
enum LONG = 1304 { MAX = 1 }

struct relay = 1303 {
    free    index
    uint32  errno
    uint32  INT_MAX
    uint32  EOF
    uint32  INFINITY
    uint32  __LINE__
    uint32  _rate
}
