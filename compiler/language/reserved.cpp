#include "compiler/language/reserved.h"

#include "base/ascii.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>

namespace tlvc {

namespace {

using Names = std::set<std::string, std::less<>>;

Names words(const char *text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

const Names keywords = words(R"(
_Alignas _Alignof _Atomic _BitInt _Bool _Complex _Decimal128 _Decimal32 _Decimal64 _Generic _Imaginary _Noreturn _Static_assert
_Thread_local alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t char32_t char8_t class co_await co_return
co_yield compl concept const const_cast consteval constexpr constinit continue decltype default delete do double dynamic_cast else enum
explicit export extern false float for friend goto if inline int long mutable namespace new noexcept not not_eq nullptr operator or or_eq
private protected public register reinterpret_cast requires restrict return short signed sizeof static static_assert static_cast struct
switch template this thread_local throw true try typedef typeid typename typeof typeof_unqual union unsigned using virtual void volatile
wchar_t while xor xor_eq
)");

// Lower-case macros of the C library and of compilers. Upper-case ones are told by their looks.
const Names macros = words(R"(
assert complex errno fpclassify imaginary isfinite isgreater isgreaterequal isinf isless islessequal islessgreater isnan isnormal
isunordered linux noreturn NULL offsetof setjmp signbit sigsetjmp stderr stdin stdout unix va_arg va_copy va_end va_start
)");

// What the C library declares, in the headers that generated code or its users include; the namespace of the
// C++ library; and the parameters of generated functions.
const Names declared = words(R"(
abort abs acos acosh aligned_alloc asctime asin asinh at_quick_exit atan atan2 atanh atexit atof atoi atol atoll basename bcmp bcopy bsearch
bzero calloc cbrt ceil clearerr clock clock_t copysign cos cosh ctime difftime div div_t double_t erf erfc exit exp exp2 explicit_bzero
expm1 fabs fclose fdim feof ferror fflush ffs ffsl ffsll fgetc fgetpos fgets FILE float_t floor fma fmax fmin fmod fopen fpos_t fprintf
fputc fputs fread free freopen frexp fscanf fseek fsetpos ftell fwrite getc getchar getenv gets gmtime hypot ilogb in index int16_t int32_t
int64_t int8_t int_fast16_t int_fast32_t int_fast64_t int_fast8_t int_least16_t int_least32_t int_least64_t int_least8_t intmax_t intptr_t
isalnum isalpha isblank iscntrl isdigit isgraph islower isprint ispunct isspace isupper isxdigit labs ldexp ldiv ldiv_t lgamma llabs lldiv
lldiv_t llrint llround locale_t localtime log log10 log1p log2 logb lrint lround main malloc max_align_t mblen mbstowcs mbtowc memccpy
memchr memcmp memcpy memfrob memmem memmove mempcpy memrchr memset mktime modf nan nearbyint nextafter nexttoward nullptr_t out perror pow
printf ptrdiff_t putc putchar puts qsort quick_exit raise rand rawmemchr realloc remainder remove remquo rename rewind rindex rint round
scalbln scalbn scanf setbuf setvbuf sig_atomic_t sigabbrev_np sigdescr_np signal sin sinh size_t snprintf sprintf sqrt srand sscanf ssize_t
std stpcpy stpncpy strcasecmp strcasecmp_l strcasestr strcat strchr strchrnul strcmp strcoll strcoll_l strcpy strcspn strdup strerror
strerror_l strerror_r strerrordesc_np strerrorname_np strfry strftime strlen strncasecmp strncasecmp_l strncat strncmp strncpy strndup
strnlen strpbrk strrchr strsep strsignal strspn strstr strtod strtof strtok strtok_r strtol strtold strtoll strtoul strtoull strverscmp
strxfrm strxfrm_l system tan tanh tgamma time time_t timespec_get tmpfile tmpnam tolower toupper trunc uint16_t uint32_t uint64_t uint8_t
uint_fast16_t uint_fast32_t uint_fast64_t uint_fast8_t uint_least16_t uint_least32_t uint_least64_t uint_least8_t uintmax_t uintptr_t ungetc
va_list vfprintf vfscanf vprintf vscanf vsnprintf vsprintf vsscanf wint_t
)");

// Headers of these names are not generated from a family.
const Names taken = words(R"(
all codes forms inspect record register runtime tlvmsg tlvmsg_format tlvmsg_json typed types version
)");

struct Foreign {
    std::string_view names; // each between bars
    std::string_view help;
};

constexpr Foreign types[] = {
    {"|unsigned char|byte|bool|boolean|_Bool|u8|uint8_t|", "write uint8"},
    {"|signed char|i8|s8|int8_t|", "write int8"},
    {"|unsigned short|unsigned short int|ushort|u16|uint16_t|", "write uint16"},
    {"|short|short int|i16|s16|int16_t|", "write int16"},
    {"|unsigned|unsigned int|uint|u32|uint32_t|size_t|", "write uint32"},
    {"|int|signed|signed int|i32|s32|int32_t|", "write int32"},
    {"|unsigned long|unsigned long int|", "write uint32 or uint64"},
    {"|long|long int|", "write int32 or int64"},
    {"|unsigned long long|unsigned long long int|u64|uint64_t|", "write uint64"},
    {"|long long|long long int|i64|s64|int64_t|", "write int64"},
    {"|float|double|long double|", "numbers are whole: send a multiple, such as thousandths in a uint32"},
    {"|string|str|text|bytes|",
     "text is bytes: declare 'bytes NAME[CAPACITY]' or 'dynamic bytes NAME counted by uint8' and use that"},
};

// Names of the library, of the functions of each type and of the platform begin like this; and what would make
// of tlvmsg_encode_TYPE a tlvmsg_encode_alloc_TYPE.
constexpr std::string_view prefixes[] = {"tlvmsg",      "tlv_", "get_tlv_", "encode_tlv_",
                                         "decode_tlv_", "osal", "OSAL",     "alloc"};

bool is_name(std::string_view name) {
    constexpr std::string_view parts = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    return !name.empty() && name[0] > '9' && name.find_first_not_of(parts) == name.npos;
}

// As INT32_MAX, SIZE_MAX and TLVMSG_TAG_x are.
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

std::string instead_of(std::string_view type) {
    for (const Foreign &each : types) {
        if (each.names.find("|" + std::string(type) + "|") != std::string_view::npos) {
            return std::string(each.help);
        }
    }
    const std::string_view first = type.substr(0, type.find(' '));
    const bool named = (first == "struct" || first == "enum" || first == "union") &&
                       type.find(' ') != type.npos && type.find(' ') == type.rfind(' ');
    return named ? "leave out '" + std::string(first) + "'" : "";
}

std::string_view why_no_family_name(std::string_view name) {
    if (!is_name(name)) {
        return "a name is letters, digits and underscores, and begins with no digit";
    }
    return taken.contains(name) ? "a header of the library has it" : "";
}

} // namespace tlvc
