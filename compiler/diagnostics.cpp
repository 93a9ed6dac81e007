#include "diagnostics.h"

#include "base/suggest.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace tlvc {

namespace {

constexpr std::array entries = {
    CatalogueEntry{
        Fault::UnexpectedCharacter, "unexpected character", "'{}' means nothing here",
        R"(Outside remarks and quoted paths a schema consists of names, decimal numbers and { } [ ] = : , @.
Members need no separator: write 'uint16 slot', not 'uint16 slot;'.)"},
    CatalogueEntry{Fault::UnterminatedString, "unterminated string", "the closing quote is missing",
                   R"(A quoted path ends on the line on which it begins: import "../common/session.tlv")"},
    CatalogueEntry{Fault::MalformedNumber, "malformed number", "'{}' is not a decimal number",
                   R"(Numbers are decimal digits and nothing else. Write 1357, not 0x54d.)"},
    CatalogueEntry{
        Fault::MisplacedDoc, "misplaced documentation", "{}",
        R"('//!' lines at the top of a file say what the file is for. '///' lines stand directly before the
declaration, the member, the alternative or the enumerator that they document, each on a line of its own:

    /// Counted from 0.
    uint16 slot

A remark that documents nothing begins with '//' and may stand anywhere.)"},
    CatalogueEntry{Fault::UnexpectedToken, "unexpected text", "expected {}, found {}",
                   R"(The declarations are:

    enum NAME = TAG { NAME = VALUE ... }
    struct NAME = TAG { TYPE NAME ... }
    message NAME { TYPE NAME ... }
    array NAME of TYPE[CAPACITY]
    bytes NAME[CAPACITY]
    dynamic array NAME of TYPE counted by COUNT
    dynamic bytes NAME counted by COUNT
    union NAME by ENUMERATION SELECTOR { VALUE: TYPE NAME ... })"},
    CatalogueEntry{
        Fault::UnclosedBody, "unclosed body", "expected a member or '}}', found {}",
        R"(The body of an enumeration, a structure, a message or a union ends with '}'. Declarations do not nest, so the line
that begins the next one shows that the brace is missing.)"},
    CatalogueEntry{Fault::LateImport, "late import", "an import stands before the first declaration",
                   R"(Imports come first, so that the top of a file shows what it depends on.)"},
    CatalogueEntry{
        Fault::ImportNotFound, "import not found", "cannot find '{}'",
        R"(The path of an import is relative to the directory of the file that imports, whatever the current
directory is: import "../common/session.tlv")"},
    CatalogueEntry{
        Fault::CircularImport, "circular import", "'{}' imports itself",
        R"(Imports lead one way. Move what the files share to a third file that imports none of them.)"},
    CatalogueEntry{
        Fault::FamilyName, "unusable family name", "the directory '{}' cannot name a family: {}",
        R"(A family is the directory that holds a schema file. Its name becomes that of a header, so it is made
of letters, digits and underscores: 'voice_ports', not 'voice-ports'.)"},
    CatalogueEntry{
        Fault::FamilySplit, "family in two directories", "another directory is the family '{}' already",
        R"(A family is one directory, and two families of one name would generate the same files. Rename one.)"},
    CatalogueEntry{
        Fault::UndefinedType, "undefined type", "type '{}' is not defined",
        R"(No loaded file declares the type. Files are loaded when they are named on the command line or
imported by a loaded file. Predefined are char, uint8, int8, uint16, int16, uint32, int32, uint64
and int64.)"},
    CatalogueEntry{
        Fault::TypeNotImported, "type not imported", "type '{}' is declared in a file that is not imported",
        R"(A file uses its own types and those of the files that it imports itself. What these import in turn
is not passed on, so that every dependency can be read at the top of the file.)"},
    CatalogueEntry{
        Fault::DuplicateName, "name declared twice", "'{}' is declared already",
        R"(Names of types become names of C records and functions, so they are unique over all files.)"},
    CatalogueEntry{
        Fault::DuplicateTag, "tag used twice", "tag {} is taken",
        R"(A receiver tells elements apart by their tags, so no two enumerations or structures share one. A tag
that was in use must not come back with another meaning: take a number that was never used.)"},
    CatalogueEntry{
        Fault::TagRange, "tag out of range", "a tag is a number from {} to {}",
        R"(Tags travel in 16 bits, and those up to 1000 are kept for scalars, arrays and future use.)"},
    CatalogueEntry{
        Fault::KeywordName, "keyword as a name", "'{}' is a keyword of C or C++",
        R"(Names of types, members and selectors appear in headers for C and C++. Write 'class_', for instance,
or better a word that says more.)"},
    CatalogueEntry{
        Fault::DuplicateMember, "member name used twice", "'{}' is the name of another member of '{}'",
        R"(The members of a record have distinct names, and so have the alternatives and the selector of a
union. The count before a dynamic array and the selector before a union become fields of the array's
or union's own record; they alone may share a name with a neighbour.)"},
    CatalogueEntry{
        Fault::EmptyBody, "empty body", "'{}' has no members",
        R"(C has no empty records. A structure that carries nothing can hold one scalar that is always 0.)"},
    CatalogueEntry{
        Fault::MessageUsed, "message used as a type", "message '{}' cannot be part of another type",
        R"(A message has no tag, so a receiver could not tell where it begins or ends inside another element.
Declare what the two share as a structure.)"},
    CatalogueEntry{
        Fault::MessageMember, "bare value in a message",
        "'{}' is {}: a message holds structures and enumerations",
        R"(Members of a message are recognised by their tags. Put scalars, arrays and unions into a structure.)"},
    CatalogueEntry{
        Fault::ArrayElement, "type that an array cannot hold", "'{}' is {} and cannot be the element of {}",
        R"(An array with a capacity holds integers of 16, 32 or 64 bits, enumerations or structures; a dynamic
array holds enumerations or structures. For bytes there is a form of its own:

    bytes serial_number_array[32]
    dynamic bytes if_name_array counted by uint8

Wrap anything else in a structure.)"},
    CatalogueEntry{
        Fault::AlternativeType, "type that cannot be an alternative",
        "'{}' is {} and cannot be an alternative",
        R"(An alternative is a scalar, an enumeration or a structure: one element, with no count or selector
that would have to stand before it. Wrap anything else in a structure.)"},
    CatalogueEntry{
        Fault::ZeroCapacity, "capacity of 0", "'{}' has room for nothing",
        R"(The record of an array has room for as many elements as the capacity says, and C has no empty
arrays.)"},
    CatalogueEntry{
        Fault::LargeCapacity, "capacity too large", "the capacity of '{}' is over {}",
        R"(The count of an array travels in 16 bits, so elements beyond 65,535 could never be sent.)"},
    CatalogueEntry{
        Fault::CountType, "type that cannot count", "'{}' cannot count {}",
        R"(The count of dynamic elements is a uint8 or a uint16; that of dynamic bytes may be a uint32 as well.
On the wire an array's own count is 16 bits wide, whatever its record has.)"},
    CatalogueEntry{Fault::MissingCount, "dynamic array without its count", "nothing counts '{}'",
                   R"(Directly before a dynamic array its structure lists the scalar that counts it:

    uint8     count
    name_str  name     // dynamic bytes name_str counted by uint8)"},
    CatalogueEntry{
        Fault::WrongCount, "wrong count", "this does not count '{}' as its type demands",
        R"(The count before a dynamic array is named 'count' and has the type that the array is 'counted by'.
It is the count field of the array's own record.)"},
    CatalogueEntry{Fault::SelectorType, "selector that is no enumeration",
                   "'{}' is {}: an enumeration selects",
                   R"(A union is declared 'by' the enumeration whose value selects the alternative:

    union ip_address_type_union by addr_type type { 1: ipv4_addr ipv4 })"},
    CatalogueEntry{
        Fault::MissingSelector, "union without its selector", "nothing selects an alternative of '{}'",
        R"(Directly before a union its structure lists the enumeration that selects the alternative:

    addr_type              type
    ip_address_type_union  address     // union ip_address_type_union by addr_type type)"},
    CatalogueEntry{Fault::WrongSelector, "wrong selector",
                   "this does not select from '{}' as its type demands",
                   R"(The enumeration before a union has the type and the name that follow 'by' in the union's
declaration. It is the selector field of the union's own record.)"},
    CatalogueEntry{
        Fault::DuplicateValue, "value given twice", "value {} selects another alternative already",
        R"(Every value selects at most one alternative. An alternative may have several values: 3, 4: uint8
octet)"},
    CatalogueEntry{Fault::LargeValue, "value too large", "the value is over {}",
                   R"(Enumerations, and so the selectors of unions, are unsigned 32-bit numbers.)"},
    CatalogueEntry{Fault::UnknownAttribute, "unknown attribute", "there is no attribute '{}'",
                   R"(A member or an alternative may be followed by attributes, each behind an '@'.)"},
    CatalogueEntry{
        Fault::MisplacedAttribute, "misplaced attribute", "'{}' is out of place: {}",
        R"(An attribute has no meaning where it does not belong, and giving one twice adds nothing.)"},
    CatalogueEntry{
        Fault::EnclosingRecord, "union outside its record", "'{}' cannot be in '{}': {}",
        R"(A union declared 'in' a structure has no record of its own: its operations take that structure,
which holds the union once, directly behind its selector. No other structure can hold it. Leave out
'in' for a union that several structures use.)"},
    CatalogueEntry{
        Fault::TypeCycle, "type that holds itself", "'{}' holds itself",
        R"(A record that holds itself, directly or through others, would have no end. Arrays, dynamic ones
included, and alternatives of unions count as held.)"},
    CatalogueEntry{
        Fault::FamilyCycle, "families that use each other", "family '{}' uses '{}', which leads back to it",
        R"(The header of a family includes those of the families that it uses, so use leads one way. Move what
they share to a family of its own.)"},
    CatalogueEntry{
        Fault::FixedSize, "structure too large", "'{}' takes {} bytes or more, and an element at most {}",
        R"(Sizes of elements are 16-bit numbers. This structure exceeds them even with every array empty and
every union absent, so it could never be sent.)"},
    CatalogueEntry{
        Fault::MemberNamedAsType, "member named as an enumeration",
        "'{}' names both a member of '{}' and an enumeration that it uses",
        R"(An enumeration is a plain type name in the C header. A field of that name would change what the name
means within the record, which C++ refuses: name the member 'action', not 'vlan_action'.)"},
    CatalogueEntry{
        Fault::UnknownEnumerator, "unknown enumerator", "'{}' is no enumerator of '{}'",
        R"(An alternative is chosen by numbers or by enumerators of the enumeration that the union is declared 'by':

    enum svrm_ip_type = 1225 { static = 0  dhcp = 1 }
    union svrm_conf_union by svrm_ip_type ip_type { static: svrm_addr_info addr_info  1: uint8 octet })"},
    CatalogueEntry{
        Fault::DuplicateEnumerator, "enumerator given twice", "'{}' has that {} already",
        R"(The enumerators of an enumeration have distinct names and distinct values, so that each value prints
as one name and each name reads as one value.)"},
    CatalogueEntry{
        Fault::TakenName, "name that C or the library needs", "'{}' cannot name a {}: {}",
        R"(Names of types become global names of C headers, so they must not be those of the C library, of its
macros or of this library, in whose headers and programs they would collide: 'relay_time', not 'time'.
Names of members live in their records and only have to keep clear of macros: 'index', 'signal' and
'time' are good ones.)"},
    CatalogueEntry{
        Fault::NameGeneratedTwice, "name generated twice", "'{}' comes out as '{}', which is taken",
        R"(An enumerator becomes a macro that is called after its enumeration and itself: 'slow' of 'port_speed'
is port_speed_slow. A macro replaces its name everywhere, so no type, member or other enumerator may
have it. Rename one of the two.)"},
    CatalogueEntry{
        Fault::TooDeep, "types nested too deeply", "'{}' nests types {} deep, and at most {} are allowed",
        R"(Recursion of the library follows the nesting of types, and the stack that it promises to need holds
for this depth: scalars, members, items and alternatives each count one. Flatten the type.)"},
    CatalogueEntry{
        Fault::LongPath, "member path too long",
        "a path in '{}' takes {} characters, and at most {} are allowed",
        R"(Faults spell the whole way from the type to the member at fault in a buffer of fixed size. Shorten the
names of members, or nest the type less.)"},
    CatalogueEntry{
        Fault::ArrayNeverFull, "array that cannot travel when full",
        "'{}' takes {} bytes when full, and an element at most {}",
        R"(Sizes of elements are 16-bit numbers. A record has room for all items of the array, but they cannot be sent
at once. Lower the capacity, or send the items in several messages.)"},
    CatalogueEntry{
        Fault::UnusedEnumeration, "enumeration that nothing uses", "nothing uses '{}'",
        R"(No member, array or union of the loaded files names the enumeration, so it takes a tag and is never sent.
It may be left over, or a member has the type uint32 that was meant to have this one.)"},
    CatalogueEntry{Fault::UndocumentedType, "undocumented type", "'{}' has no documentation",
                   R"(What '///' lines say of a type is in the header, and in what tools show of it:

    /// Which relay, and how.
    struct zel_relay = 2001 { uint16 slot  uint16 port })"},
};

constexpr size_t first_warning = 201;

constexpr bool in_order() {
    size_t expected = 1;
    for (const CatalogueEntry &each : entries) {
        expected = each.fault == Fault::ArrayNeverFull ? first_warning : expected;
        if (static_cast<size_t>(each.fault) != expected++) {
            return false;
        }
    }
    return entries.back().fault == Fault::UndocumentedType;
}
static_assert(in_order(), "the catalogue has one entry for each fault, in the order of their codes");

} // namespace

std::span<const CatalogueEntry> catalogue() { return entries; }

const CatalogueEntry &entry(Fault fault) {
    return *std::find_if(entries.begin(), entries.end(),
                         [=](const CatalogueEntry &each) { return each.fault == fault; });
}

Severity severity(Fault fault) {
    return static_cast<size_t>(fault) < first_warning ? Severity::Error : Severity::Warning;
}

std::string code(Fault fault) {
    const size_t number = static_cast<size_t>(fault);
    return severity(fault) == Severity::Error ? fmt::format("T{:03}", number)
                                              : fmt::format("W{:03}", number - first_warning + 1);
}

Diagnostic &Diagnostic::suggest(std::string_view name, const std::vector<std::string_view> &candidates) {
    if (std::string meant = tlvmsg::base::did_you_mean(name, candidates); !meant.empty()) {
        help(std::move(meant));
    }
    return *this;
}

std::vector<Diagnostic> Diagnostics::in_file_order() const {
    std::vector<Diagnostic> result = found_;
    std::stable_sort(result.begin(), result.end(), [](const Diagnostic &a, const Diagnostic &b) {
        return std::tie(a.span.file, a.span.begin) < std::tie(b.span.file, b.span.begin);
    });
    return result;
}

} // namespace tlvc
