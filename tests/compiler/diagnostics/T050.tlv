reserved 40005, 40010 to 40020, 40008 to 40007
enum state = 40021 {
    reserved 4294967296
    reserved 4, 7 to 9, 0x4, 0 to 1, 8 to 12, 10, 12 to 11
    reserved = 2
    to       = 3
}
reserved 40021 to 65536, 40001 to 40012, 40005 to 40005, 40030
