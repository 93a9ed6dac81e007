enum free = 1301
enum tlvmsg_mode = 1302

struct relay = 1303 {
    free    index
    uint32  errno
    uint32  INT_MAX
}
