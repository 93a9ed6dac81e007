#include "compiler/language/reserved.h"

#include "base/ascii.h"
#include "compiler/language/word_list.h"
#include "compiler/language/word_lists.h"

#include <algorithm>
#include <iterator>

namespace tlvc {

namespace {

constexpr WordList keywords(reserved_keywords);

// Macros of compilers and of the headers of C that programs of any kind include, also those for C++. Further ones are
// recognized by their looks.
constexpr WordList macros(reserved_macros);

// Names that the C library declares in the headers that generated code or its users include; the namespace of the
// C++ library; and the parameters of generated functions.
constexpr WordList declared(reserved_declared);

// Headers of these names are not generated from a family.
constexpr WordList headers(reserved_headers);

// Names of the library, of the functions of each type and of the platform begin like this. A type called alloc_X would
// have a function tlvmsg_encode_alloc_X, which the type X has as well.
constexpr std::string_view prefixes[] = {"tlvmsg",      "tlv_", "get_tlv_", "encode_tlv_",
                                         "decode_tlv_", "osal", "OSAL",     "alloc"};

bool is_name(std::string_view name) {
    constexpr std::string_view parts = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    return !name.empty() && name[0] > '9' && name.find_first_not_of(parts) == name.npos;
}

// True for names like INT32_MAX, SIZE_MAX and TLVMSG_TAG_x.
bool looks_like_macro(std::string_view name) {
    constexpr std::string_view beginnings[] = {"INT", "UINT", "PTRDIFF_", "SIG", "SIZE_", "WCHAR_", "WINT_"};
    const bool lower = std::any_of(name.begin(), name.end(), tlvmsg::base::is_lower);
    return name.starts_with("TLVMSG_") ||
           (!lower && std::any_of(std::begin(beginnings), std::end(beginnings),
                                  [&](std::string_view beginning) { return name.starts_with(beginning); }));
}

} // namespace

bool is_keyword(std::string_view name) { return keywords.contains(name); }

std::string_view why_no_member_name(std::string_view name) {
    if (name.size() > 1 && name[0] == '_' && (name[1] == '_' || (name[1] >= 'A' && name[1] <= 'Z'))) {
        return "names that begin like it are the compiler's"; // __LINE__
    }
    return macros.contains(name) || looks_like_macro(name) ? "C headers define macros like it" : "";
}

std::string_view why_no_type_name(std::string_view name) {
    if (const std::string_view reason = why_no_member_name(name); !reason.empty()) {
        return reason;
    }
    if (declared.contains(name)) {
        return "C or C++ programs have it for something else";
    }
    if (std::any_of(std::begin(prefixes), std::end(prefixes),
                    [&](std::string_view prefix) { return name.starts_with(prefix); })) {
        return "names that begin like it are the library's own";
    }
    return name.starts_with('_') ? "names that begin with an underscore are the compiler's" : "";
}

std::string_view why_no_family_name(std::string_view name) {
    if (!is_name(name)) {
        return "a name is letters, digits and underscores, and begins with no digit";
    }
    return headers.contains(name) ? "a header of the library has it" : "";
}

} // namespace tlvc
