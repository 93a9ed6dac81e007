array words of uint32[65535]

struct row = 40001 {
    words  cells
}

array rows of row[65535]

struct table = 40002 {
    rows  cells
}

dynamic bytes note counted by uint16

struct table_list = 40003 {
    table  first
    table  last
}
