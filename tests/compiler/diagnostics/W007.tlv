/// Names that a program may get from the system as well.
enum IPPROTO = 40000 { TCP = 6 }
/// Beside <sys/uio.h>.
struct iovec = 40001 {
    IPPROTO  stat
    uint32   st_atime
}
/// Has another name in C.
struct timestamp = 40002 { uint32 minor }
