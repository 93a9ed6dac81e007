#include "diagnostics.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace tlvc {

namespace {

constexpr std::array entries = {
    CatalogueEntry{
        Fault::UnexpectedCharacter, "unexpected character", "'{}' means nothing here",
        "Outside remarks and quoted paths a schema consists of names, decimal numbers and { } [ ] = : , @.\n"
        "Members need no separator: write 'uint16 slot', not 'uint16 slot;'."},
    CatalogueEntry{Fault::UnterminatedString, "unterminated string", "the closing quote is missing",
                   "A quoted path ends on the line on which it begins: import \"../common/session.tlv\""},
    CatalogueEntry{Fault::MalformedNumber, "malformed number", "'{}' is not a decimal number",
                   "Numbers are decimal digits and nothing else. Write 1357, not 0x54d."},
    CatalogueEntry{
        Fault::MisplacedDoc, "misplaced documentation", "{}",
        "'//!' lines at the top of a file say what the file is for. '///' lines stand directly before the\n"
        "declaration, the member or the alternative that they document, each on a line of its own:\n\n"
        "    /// Counted from 0.\n"
        "    uint16 slot\n\n"
        "A remark that documents nothing begins with '//' and may stand anywhere."},
    CatalogueEntry{Fault::UnexpectedToken, "unexpected text", "expected {}, found {}",
                   "The declarations are:\n\n"
                   "    enum NAME = TAG\n"
                   "    struct NAME = TAG { TYPE NAME ... }\n"
                   "    message NAME { TYPE NAME ... }\n"
                   "    array NAME of TYPE[CAPACITY]\n"
                   "    bytes NAME[CAPACITY]\n"
                   "    dynamic array NAME of TYPE counted by COUNT\n"
                   "    dynamic bytes NAME counted by COUNT\n"
                   "    union NAME by ENUMERATION SELECTOR { VALUE: TYPE NAME ... }"},
    CatalogueEntry{
        Fault::UnclosedBody, "unclosed body", "expected a member or '}}', found {}",
        "The body of a structure, a message or a union ends with '}'. Declarations do not nest, so the line\n"
        "that begins the next one shows that the brace is missing."},
    CatalogueEntry{Fault::LateImport, "late import", "an import stands before the first declaration",
                   "Imports come first, so that the top of a file shows what it depends on."},
    CatalogueEntry{
        Fault::ImportNotFound, "import not found", "cannot find '{}'",
        "The path of an import is relative to the directory of the file that imports, whatever the current\n"
        "directory is: import \"../common/session.tlv\""},
    CatalogueEntry{
        Fault::CircularImport, "circular import", "'{}' imports itself",
        "Imports lead one way. Move what the files share to a third file that imports none of them."},
    CatalogueEntry{
        Fault::FamilyName, "unusable family name", "the directory '{}' cannot name a family: {}",
        "A family is the directory that holds a schema file. Its name becomes that of a header, so it is\n"
        "made of letters, digits and underscores: 'voice_ports', not 'voice-ports'."},
    CatalogueEntry{
        Fault::FamilySplit, "family in two directories", "another directory is the family '{}' already",
        "A family is one directory, and two families of one name would generate the same files. Rename one."},
    CatalogueEntry{Fault::UndefinedType, "undefined type", "type '{}' is not defined",
                   "No loaded file declares the type. Files are loaded when they are named on the command "
                   "line or imported\n"
                   "by a loaded file. Predefined are char, uint8, int8, uint16, int16, uint32, int32, uint64 "
                   "and int64."},
    CatalogueEntry{Fault::TypeNotImported, "type not imported",
                   "type '{}' is declared in a file that is not imported",
                   "A file uses its own types and those of the files that it imports itself. What these "
                   "import in turn is\n"
                   "not passed on, so that every dependency can be read at the top of the file."},
    CatalogueEntry{
        Fault::DuplicateName, "name declared twice", "'{}' is declared already",
        "Names of types become names of C records and functions, so they are unique over all files."},
    CatalogueEntry{
        Fault::DuplicateTag, "tag used twice", "tag {} is taken",
        "A receiver tells elements apart by their tags, so no two enumerations or structures share one. A "
        "tag\n"
        "that was in use must not come back with another meaning: take a number that was never used."},
    CatalogueEntry{
        Fault::TagRange, "tag out of range", "a tag is a number from {} to {}",
        "Tags travel in 16 bits, and those up to 1000 are kept for scalars, arrays and future use."},
    CatalogueEntry{Fault::KeywordName, "keyword as a name", "'{}' is a keyword of C or C++",
                   "Names of types, members and selectors appear in headers for C and C++. Write 'class_', "
                   "for instance, or\n"
                   "better a word that says more."},
    CatalogueEntry{
        Fault::DuplicateMember, "member name used twice", "'{}' is the name of another member of '{}'",
        "The members of a record have distinct names, and so have the alternatives and the selector of a "
        "union.\n"
        "The count before a dynamic array and the selector before a union become fields of the array's or\n"
        "union's own record; they alone may share a name with a neighbour."},
    CatalogueEntry{
        Fault::EmptyBody, "empty body", "'{}' has no members",
        "C has no empty records. A structure that carries nothing can hold one scalar that is always 0."},
    CatalogueEntry{
        Fault::MessageUsed, "message used as a type", "message '{}' cannot be part of another type",
        "A message has no tag, so a receiver could not tell where it begins or ends inside another element.\n"
        "Declare what the two share as a structure."},
    CatalogueEntry{Fault::MessageMember, "bare value in a message",
                   "'{}' is {}: a message holds structures and enumerations",
                   "Members of a message are recognised by their tags. Put scalars, arrays and unions into a "
                   "structure."},
    CatalogueEntry{Fault::ArrayElement, "type that an array cannot hold",
                   "'{}' is {} and cannot be the element of {}",
                   "An array with a capacity holds integers of 16, 32 or 64 bits, enumerations or "
                   "structures; a dynamic\n"
                   "array holds enumerations or structures. For bytes there is a form of its own:\n\n"
                   "    bytes serial_number_array[32]\n"
                   "    dynamic bytes if_name_array counted by uint8\n\n"
                   "Wrap anything else in a structure."},
    CatalogueEntry{Fault::AlternativeType, "type that cannot be an alternative",
                   "'{}' is {} and cannot be an alternative",
                   "An alternative is a scalar, an enumeration or a structure: one element, with no count or "
                   "selector that\n"
                   "would have to stand before it. Wrap anything else in a structure."},
    CatalogueEntry{Fault::ZeroCapacity, "capacity of 0", "'{}' has room for nothing",
                   "The record of an array has room for as many elements as the capacity says, and C has no "
                   "empty arrays."},
    CatalogueEntry{
        Fault::LargeCapacity, "capacity too large", "the capacity of '{}' is over {}",
        "The count of an array travels in 16 bits, so elements beyond 65,535 could never be sent."},
    CatalogueEntry{Fault::CountType, "type that cannot count", "'{}' cannot count {}",
                   "The count of dynamic elements is a uint8 or a uint16; that of dynamic bytes may be a "
                   "uint32 as well.\n"
                   "On the wire an array's own count is 16 bits wide, whatever its record has."},
    CatalogueEntry{Fault::MissingCount, "dynamic array without its count", "nothing counts '{}'",
                   "Directly before a dynamic array its structure lists the scalar that counts it:\n\n"
                   "    uint8     count\n"
                   "    name_str  name     // dynamic bytes name_str counted by uint8"},
    CatalogueEntry{Fault::WrongCount, "wrong count", "this does not count '{}' as its type demands",
                   "The count before a dynamic array is named 'count' and has the type that the array is "
                   "'counted by'. It is\n"
                   "the count field of the array's own record."},
    CatalogueEntry{Fault::SelectorType, "selector that is no enumeration",
                   "'{}' is {}: an enumeration selects",
                   "A union is declared 'by' the enumeration whose value selects the alternative:\n\n"
                   "    union ip_address_type_union by addr_type type { 1: ipv4_addr ipv4 }"},
    CatalogueEntry{
        Fault::MissingSelector, "union without its selector", "nothing selects an alternative of '{}'",
        "Directly before a union its structure lists the enumeration that selects the alternative:\n\n"
        "    addr_type              type\n"
        "    ip_address_type_union  address     // union ip_address_type_union by addr_type type"},
    CatalogueEntry{Fault::WrongSelector, "wrong selector",
                   "this does not select from '{}' as its type demands",
                   "The enumeration before a union has the type and the name that follow 'by' in the union's "
                   "declaration.\n"
                   "It is the selector field of the union's own record."},
    CatalogueEntry{Fault::DuplicateValue, "value given twice", "value {} selects another alternative already",
                   "Every value selects at most one alternative. An alternative may have several values: 3, "
                   "4: uint8 octet"},
    CatalogueEntry{Fault::LargeValue, "value too large", "the value of an alternative is over {}",
                   "Selectors are unsigned 32-bit numbers."},
    CatalogueEntry{Fault::UnknownAttribute, "unknown attribute", "there is no attribute '{}'",
                   "The attributes are '@zero_count', for a member that is a dynamic array, and "
                   "'@end_by_length', for an\n"
                   "alternative that is an enumeration."},
    CatalogueEntry{
        Fault::MisplacedAttribute, "misplaced attribute", "'{}' is out of place: {}",
        "'@zero_count' makes the decoder clear the count of a dynamic array before it decodes the array.\n"
        "'@end_by_length' makes an alternative that is an enumeration end where its own length says. Neither "
        "has\n"
        "a meaning elsewhere, and giving one twice adds nothing."},
    CatalogueEntry{Fault::EnclosingRecord, "union outside its record", "'{}' cannot be in '{}': {}",
                   "A union declared 'in' a structure has no record of its own: its operations take that "
                   "structure, which\n"
                   "holds the union once, directly behind its selector. No other structure can hold it. "
                   "Leave out 'in' for a\n"
                   "union that several structures use."},
    CatalogueEntry{
        Fault::TypeCycle, "type that holds itself", "'{}' holds itself",
        "A record that holds itself, directly or through others, would have no end. Arrays, dynamic ones\n"
        "included, and alternatives of unions count as held."},
    CatalogueEntry{Fault::FamilyCycle, "families that use each other",
                   "family '{}' uses '{}', which leads back to it",
                   "The header of a family includes those of the families that it uses, so use leads one "
                   "way. Move what they\n"
                   "share to a family of its own."},
    CatalogueEntry{Fault::FixedSize, "structure too large",
                   "'{}' takes {} bytes or more, and an element at most {}",
                   "Sizes of elements are 16-bit numbers. This structure exceeds them even with every array "
                   "empty and every\n"
                   "union absent, so it could never be sent."},
    CatalogueEntry{
        Fault::MemberNamedAsType, "member named as an enumeration",
        "'{}' names both a member of '{}' and an enumeration that it uses",
        "An enumeration is a plain type name in the C header. A field of that name would change what the "
        "name\n"
        "means within the record, which C++ refuses: name the member 'action', not 'vlan_action'."},
};

constexpr bool in_order() {
    for (size_t i = 0; i < entries.size(); ++i) {
        if (static_cast<size_t>(entries[i].fault) != i) {
            return false;
        }
    }
    return entries.back().fault == Fault::MemberNamedAsType;
}
static_assert(in_order(), "the catalogue has one entry for each fault, in the same order");

} // namespace

std::span<const CatalogueEntry> catalogue() { return entries; }

const CatalogueEntry &entry(Fault fault) { return entries[static_cast<size_t>(fault)]; }

std::string code(Fault fault) { return fmt::format("T{:03}", static_cast<size_t>(fault) + 1); }

std::vector<Diagnostic> Diagnostics::in_file_order() const {
    std::vector<Diagnostic> result = found_;
    std::stable_sort(result.begin(), result.end(), [](const Diagnostic &a, const Diagnostic &b) {
        return std::tie(a.span.file, a.span.begin) < std::tie(b.span.file, b.span.begin);
    });
    return result;
}

} // namespace tlvc
