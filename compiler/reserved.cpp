#include "reserved.h"

#include <algorithm>
#include <array>

namespace tlvc {

namespace {

using namespace std::string_view_literals;

constexpr std::array keywords = {
    "_Alignas"sv,
    "_Alignof"sv,
    "_Atomic"sv,
    "_BitInt"sv,
    "_Bool"sv,
    "_Complex"sv,
    "_Decimal128"sv,
    "_Decimal32"sv,
    "_Decimal64"sv,
    "_Generic"sv,
    "_Imaginary"sv,
    "_Noreturn"sv,
    "_Static_assert"sv,
    "_Thread_local"sv,
    "alignas"sv,
    "alignof"sv,
    "and"sv,
    "and_eq"sv,
    "asm"sv,
    "auto"sv,
    "bitand"sv,
    "bitor"sv,
    "bool"sv,
    "break"sv,
    "case"sv,
    "catch"sv,
    "char"sv,
    "char16_t"sv,
    "char32_t"sv,
    "char8_t"sv,
    "class"sv,
    "co_await"sv,
    "co_return"sv,
    "co_yield"sv,
    "compl"sv,
    "concept"sv,
    "const"sv,
    "const_cast"sv,
    "consteval"sv,
    "constexpr"sv,
    "constinit"sv,
    "continue"sv,
    "decltype"sv,
    "default"sv,
    "delete"sv,
    "do"sv,
    "double"sv,
    "dynamic_cast"sv,
    "else"sv,
    "enum"sv,
    "explicit"sv,
    "export"sv,
    "extern"sv,
    "false"sv,
    "float"sv,
    "for"sv,
    "friend"sv,
    "goto"sv,
    "if"sv,
    "inline"sv,
    "int"sv,
    "long"sv,
    "mutable"sv,
    "namespace"sv,
    "new"sv,
    "noexcept"sv,
    "not"sv,
    "not_eq"sv,
    "nullptr"sv,
    "operator"sv,
    "or"sv,
    "or_eq"sv,
    "private"sv,
    "protected"sv,
    "public"sv,
    "register"sv,
    "reinterpret_cast"sv,
    "requires"sv,
    "restrict"sv,
    "return"sv,
    "short"sv,
    "signed"sv,
    "sizeof"sv,
    "static"sv,
    "static_assert"sv,
    "static_cast"sv,
    "struct"sv,
    "switch"sv,
    "template"sv,
    "this"sv,
    "thread_local"sv,
    "throw"sv,
    "true"sv,
    "try"sv,
    "typedef"sv,
    "typeid"sv,
    "typename"sv,
    "typeof"sv,
    "typeof_unqual"sv,
    "union"sv,
    "unsigned"sv,
    "using"sv,
    "virtual"sv,
    "void"sv,
    "volatile"sv,
    "wchar_t"sv,
    "while"sv,
    "xor"sv,
    "xor_eq"sv,
};
static_assert(std::is_sorted(keywords.begin(), keywords.end()));

// Headers of these names are not generated from a family.
constexpr std::array taken = {"all"sv, "inspect"sv, "runtime"sv, "types"sv};

bool is_name(std::string_view name) {
    constexpr std::string_view start = "ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    return !name.empty() && start.find(name[0]) != std::string_view::npos &&
           std::all_of(name.begin(), name.end(), [=](char c) {
               return start.find(c) != std::string_view::npos || (c >= '0' && c <= '9');
           });
}

} // namespace

bool is_keyword(std::string_view name) { return std::binary_search(keywords.begin(), keywords.end(), name); }

std::string why_no_family_name(std::string_view name) {
    if (!is_name(name)) {
        return "a name is letters, digits and underscores";
    }
    if (std::find(taken.begin(), taken.end(), name) != taken.end()) {
        return "a header of the library has it";
    }
    return {};
}

} // namespace tlvc
