struct level_00 = 1301 {
    level_01  next
}

struct level_01 = 1302 {
    level_02  next
}

struct level_02 = 1303 {
    level_03  next
}

struct level_03 = 1304 {
    level_04  next
}

struct level_04 = 1305 {
    level_05  next
}

struct level_05 = 1306 {
    level_06  next
}

struct level_06 = 1307 {
    level_07  next
}

struct level_07 = 1308 {
    level_08  next
}

struct level_08 = 1309 {
    level_09  next
}

struct level_09 = 1310 {
    level_10  next
}

struct level_10 = 1311 {
    level_11  next
}

struct level_11 = 1312 {
    level_12  next
}

struct level_12 = 1313 {
    level_13  next
}

struct level_13 = 1314 {
    level_14  next
}

struct level_14 = 1315 {
    level_15  next
}

struct level_15 = 1316 {
    uint8  next
}
