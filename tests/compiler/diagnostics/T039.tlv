struct block = 1357 {
    uint64  item_0
    uint64  item_1
    uint64  item_2
    uint64  item_3
    uint64  item_4
    uint64  item_5
    uint64  item_6
    uint64  item_7
    uint64  item_8
    uint64  item_9
    uint64  item_10
    uint64  item_11
    uint64  item_12
    uint64  item_13
    uint64  item_14
    uint64  item_15
}
struct page = 1358 {
    block  item_0
    block  item_1
    block  item_2
    block  item_3
    block  item_4
    block  item_5
    block  item_6
    block  item_7
    block  item_8
    block  item_9
    block  item_10
    block  item_11
    block  item_12
    block  item_13
    block  item_14
    block  item_15
}
struct book = 1359 {
    page  item_0
    page  item_1
    page  item_2
    page  item_3
    page  item_4
    page  item_5
    page  item_6
    page  item_7
    page  item_8
    page  item_9
    page  item_10
    page  item_11
    page  item_12
    page  item_13
    page  item_14
    page  item_15
    page  item_16
    page  item_17
    page  item_18
    page  item_19
}
struct shelf = 1360 {
    book  first
    book  second
}
