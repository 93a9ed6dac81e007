struct inner = 1301 {
    uint8  a_name_that_says_all_there_is_to_say_about_it
}

struct middle = 1302 {
    inner  a_name_that_says_all_there_is_to_say_about_it
}

struct outer = 1303 {
    middle  a_name_that_says_all_there_is_to_say_about_it
}
