struct line = 1357 {
    uint64  item_0
    uint64  item_1
    uint64  item_2
    uint64  item_3
    uint64  item_4
    uint64  item_5
    uint64  item_6
    uint64  item_7
}
struct block = 1358 {
    line  item_0
    line  item_1
    line  item_2
    line  item_3
    line  item_4
    line  item_5
    line  item_6
    line  item_7
}
struct page = 1359 {
    block  item_0
    block  item_1
    block  item_2
    block  item_3
    block  item_4
    block  item_5
    block  item_6
    block  item_7
}
struct book = 1360 {
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
}
