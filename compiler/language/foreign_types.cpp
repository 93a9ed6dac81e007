#include "compiler/language/foreign_types.h"

#include <algorithm>
#include <array>

namespace tlvc {

namespace {

struct ForeignType {
    std::string_view own;
    std::string_view help;
    std::array<std::string_view, 7> names;
};

// clang-format off
constexpr ForeignType foreign_types[] = {
    {"uint8", "write uint8", {"unsigned char", "byte", "bool", "boolean", "_Bool", "u8", "uint8_t"}},
    {"int8", "write int8", {"signed char", "i8", "s8", "int8_t"}},
    {"uint16", "write uint16", {"unsigned short", "unsigned short int", "ushort", "u16", "uint16_t"}},
    {"int16", "write int16", {"short", "short int", "i16", "s16", "int16_t"}},
    {"uint32", "write uint32", {"unsigned", "unsigned int", "uint", "u32", "uint32_t", "size_t"}},
    {"int32", "write int32", {"int", "signed", "signed int", "i32", "s32", "int32_t"}},
    {"uint32", "write uint32 or uint64", {"unsigned long", "unsigned long int"}},
    {"int32", "write int32 or int64", {"long", "long int"}},
    {"uint64", "write uint64", {"unsigned long long", "unsigned long long int", "u64", "uint64_t"}},
    {"int64", "write int64", {"long long", "long long int", "i64", "s64", "int64_t"}},
    {"", "numbers are whole: send a multiple, such as thousandths in a uint32", {"float", "double", "long double"}},
    {"bytes", "text is bytes: write 'bytes[CAPACITY] NAME', or 'uint8 count  dynamic bytes NAME counted by uint8'",
     {"string", "str", "text", "bytes"}},
};
// clang-format on

// "struct port" in C is just "port" here.
std::optional<OwnType> without_keyword(std::string_view type) {
    for (const std::string_view keyword : {"struct ", "enum ", "union "}) {
        const std::string_view name = type.substr(std::min(keyword.size(), type.size()));
        if (type.starts_with(keyword) && name.find(' ') == name.npos) {
            return OwnType{std::string(name),
                           "leave out '" + std::string(keyword.substr(0, keyword.size() - 1)) + "'", true};
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<OwnType> own_type(std::string_view foreign) {
    for (const ForeignType &each : foreign_types) {
        const bool known = std::find(each.names.begin(), each.names.end(), foreign) != each.names.end();
        if (known && !foreign.empty()) {
            const bool certain = each.help.substr(each.help.find(' ') + 1) == each.own; // behind "write"
            return OwnType{std::string(each.own), std::string(each.help), certain};
        }
    }
    return without_keyword(foreign);
}

} // namespace tlvc
