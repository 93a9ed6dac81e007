#include "foreign.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

namespace tlvc {

namespace {

constexpr std::string_view named[] = {"struct", "enum", "union", "const", "message"};
constexpr std::string_view numbers[] = {"unsigned", "signed", "char", "short", "int", "long", "double"};

template <size_t size>
bool is_one_of(std::string_view word, const std::string_view (&words)[size]) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

constexpr std::string_view fraction = "numbers are whole: send a multiple, such as thousandths in a uint32";
constexpr std::string_view text =
    "text is bytes: declare 'bytes NAME[CAPACITY]' or 'dynamic bytes NAME counted by uint8' and use that";

struct Foreign {
    std::string_view name;
    std::string_view help;
};

constexpr Foreign words[] = {
    {"bool", "write uint8, or an enumeration"},
    {"boolean", "write uint8, or an enumeration"},
    {"byte", "write uint8"},
    {"uint", "write uint32"},
    {"float", fraction},
    {"string", text},
    {"str", text},
    {"text", text},
    {"bytes", text},
};

// Of the words that C combines, in any order.
std::string number(std::string_view type) {
    bool is_unsigned = false;
    size_t longs = 0;
    std::string_view width = "32";
    std::istringstream all{std::string(type)};
    for (std::string word; all >> word;) {
        if (!is_one_of(word, numbers)) {
            return "";
        }
        if (word == "double") {
            return std::string(fraction);
        }
        is_unsigned = is_unsigned || word == "unsigned";
        longs += word == "long" ? 1 : 0;
        width = word == "char" ? "8" : word == "short" ? "16" : width;
    }
    const char *const sign = is_unsigned ? "u" : "";
    return longs == 1 ? fmt::format("write {0}int32 or {0}int64", sign)
                      : fmt::format("write {}int{}", sign, longs > 1 ? "64" : width);
}

} // namespace

bool begins_c_type(std::string_view word) { return is_one_of(word, named) || is_c_number(word); }

bool is_c_number(std::string_view word) { return is_one_of(word, numbers); }

std::string instead_of(std::string_view type) {
    const std::string_view first = type.substr(0, type.find(' '));
    if (first != type && is_one_of(first, named)) {
        return fmt::format("leave out '{}'", first);
    }
    const auto *const known = std::find_if(std::begin(words), std::end(words),
                                           [&](const Foreign &each) { return each.name == type; });
    return known != std::end(words) ? std::string(known->help) : number(type);
}

} // namespace tlvc
