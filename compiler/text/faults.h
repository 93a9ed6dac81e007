// Every fault the compiler can find: the catalogue of `tlvc check`. Codes are published, so new ones go to the end
// of their kind.
#pragma once

#include <string_view>

namespace tlvc {

enum class Severity { Error, Warning };

struct Fault {
    std::string_view code;
    // A line with the title and, as a format string, the message; what the rule is for, with an example of the remedy.
    std::string_view text;

    std::string_view title() const { return text.substr(0, text.find(": ")); }
    std::string_view message() const;
    std::string_view explanation() const { return text.substr(text.find('\n') + 1); }
    Severity severity() const { return code.starts_with('W') ? Severity::Warning : Severity::Error; }
};

namespace fault {

// clang-format off

inline constexpr Fault unexpected_character{"T001", R"(unexpected character: {} means nothing here
Outside remarks and quoted paths a schema consists of names, decimal numbers and { } [ ] = : , @.
Members need no separator: write 'uint16 slot', not 'uint16 slot;'.)"};

inline constexpr Fault unterminated_string{"T002", R"(unterminated string: the closing quote is missing
A quoted path ends on the line on which it begins: import "../common/session.tlv")"};

inline constexpr Fault malformed_number{"T003", R"(malformed number: '{}' is not a decimal number
Numbers are decimal digits and nothing else. Write 1357, not 0x54d.)"};

inline constexpr Fault misplaced_doc{"T004", R"(misplaced documentation: {}
'//!' lines at the top of a file say what the file is for. '///' lines stand directly before the
declaration, the member, the alternative or the enumerator that they document, each on a line of its own:

    /// Counted from 0.
    uint16 slot

A remark that documents nothing begins with '//' and may stand anywhere.)"};

inline constexpr Fault unexpected_token{"T005", R"(unexpected text: expected {}, found {}
The declarations are:

    enum NAME = TAG { NAME = VALUE ... }
    struct NAME = TAG { TYPE NAME ... }
    message NAME { TYPE NAME ... }
    array NAME of TYPE[CAPACITY]
    bytes NAME[CAPACITY]
    dynamic array NAME of TYPE counted by COUNT
    dynamic bytes NAME counted by COUNT
    union NAME by ENUMERATION SELECTOR { VALUE: TYPE NAME ... })"};

inline constexpr Fault unclosed_body{"T006", R"(unclosed body: expected a member or '}}', found {}
The body of an enumeration, a structure, a message or a union ends with '}'. Declarations do not nest, so the line
that begins the next one shows that the brace is missing.)"};

inline constexpr Fault late_import{"T007", R"(late import: an import stands before the first declaration
Imports come first, so that the top of a file shows what it depends on.)"};

inline constexpr Fault import_not_found{"T008", R"(import not found: cannot find '{}'
The path of an import is relative to the directory of the file that imports, whatever the current
directory is: import "../common/session.tlv")"};

inline constexpr Fault circular_import{"T009", R"(circular import: '{}' imports itself
Imports lead one way. Move what the files share to a third file that imports none of them.)"};

inline constexpr Fault family_name{"T010", R"(unusable family name: the directory '{}' cannot name a family: {}
A family is the directory that holds a schema file. Its name becomes that of a header, so it is made of letters, digits
and underscores, begins with no digit, and is none of those that the library has: all, codes, forms, inspect, record,
register, runtime, tlvmsg, tlvmsg_format, tlvmsg_json, typed, types, version. Write 'voice_ports', not 'voice-ports'.)"};

inline constexpr Fault family_split{"T011", R"(family in two directories: another directory is the family '{}' already
A family is one directory, and two families of one name would generate the same files. Rename one.)"};

inline constexpr Fault undefined_type{"T012", R"(undefined type: type '{}' is not defined
No loaded file declares the type. Files are loaded when they are named on the command line or imported by a loaded
file. Predefined are char, uint8, int8, uint16, int16, uint32, int32, uint64 and int64.)"};

inline constexpr Fault type_not_imported{"T013", R"(type not imported: type '{}' is declared in a file that is not imported
A file uses its own types and those of the files that it imports itself. What these import in turn
is not passed on, so that every dependency can be read at the top of the file.)"};

inline constexpr Fault duplicate_name{"T014", R"(name declared twice: '{}' is declared already
Names of types become names of C records and functions, so they are unique over all files.)"};

inline constexpr Fault duplicate_tag{"T015", R"(tag used twice: tag {} is taken
A receiver tells elements apart by their tags, so no two enumerations or structures share one. A tag
that was in use must not come back with another meaning: take a number that was never used.)"};

inline constexpr Fault tag_out_of_range{"T016", R"(tag out of range: a tag is a number from {} to {}
Tags travel in 16 bits, and those up to 1000 are kept for scalars, arrays and future use. Families of your own have
those from 32768 on.)"};

inline constexpr Fault keyword_name{"T017", R"(keyword as a name: '{}' is a keyword of C or C++
Names of types, members and selectors appear in headers for C and C++. Write 'class_', for instance,
or better a word that says more.)"};

inline constexpr Fault duplicate_member{"T018", R"(member name used twice: '{}' is the name of another member of '{}'
The members of a record have distinct names, and so have the alternatives and the selector of a
union. The count before a dynamic array and the selector before a union become fields of the array's
or union's own record; they alone may share a name with a neighbour.)"};

inline constexpr Fault empty_body{"T019", R"(empty body: '{}' has no members
C has no empty records. A structure that carries nothing can hold one scalar that is always 0.)"};

inline constexpr Fault message_used{"T020", R"(message used as a type: message '{}' cannot be part of another type
A message has no tag, so a receiver could not tell where it begins or ends inside another element.
Declare what the two share as a structure.)"};

inline constexpr Fault message_member{"T021", R"(bare value in a message: '{}' is {}: a message holds structures and enumerations
Members of a message are recognised by their tags. Put scalars, arrays and unions into a structure.)"};

inline constexpr Fault array_element{"T022", R"(type that an array cannot hold: '{}' is {} and cannot be the element of {}
An array with a capacity holds integers of 16, 32 or 64 bits, enumerations or structures; a dynamic
array holds enumerations or structures. Wrap anything else in a structure, but for bytes, which have their own forms:

    bytes serial_number_array[32]
    dynamic bytes if_name_array counted by uint8)"};

inline constexpr Fault alternative_type{"T023", R"(type that cannot be an alternative: '{}' is {} and cannot be an alternative
An alternative is a scalar, an enumeration or a structure: one element, with no count or selector
that would have to stand before it. Wrap anything else in a structure.)"};

inline constexpr Fault zero_capacity{"T024", R"(capacity of 0: '{}' has room for nothing
The record of an array has room for as many elements as the capacity says, and C has no empty arrays.)"};

inline constexpr Fault large_capacity{"T025", R"(capacity too large: the capacity of '{}' is over {}
The count of an array travels in 16 bits, so elements beyond 65,535 could never be sent.)"};

inline constexpr Fault count_type{"T026", R"(type that cannot count: '{}' cannot count {}
The count of dynamic elements is a uint8 or a uint16; that of dynamic bytes may be a uint32 as well.
On the wire an array's own count is 16 bits wide, whatever its record has.)"};

inline constexpr Fault missing_count{"T027", R"(dynamic array without its count: nothing counts '{}'
Directly before a dynamic array its structure lists the scalar that counts it:

    uint8     count
    name_str  name     // dynamic bytes name_str counted by uint8)"};

inline constexpr Fault wrong_count{"T028", R"(wrong count: this does not count '{}' as its type demands
The count before a dynamic array is named 'count' and has the type that the array is 'counted by'.
It is the count field of the array's own record.)"};

inline constexpr Fault selector_type{"T029", R"(selector that is no enumeration: '{}' is {}: an enumeration selects
A union is declared 'by' the enumeration whose value selects the alternative:

    union ip_address_type_union by addr_type type { 1: ipv4_addr ipv4 })"};

inline constexpr Fault missing_selector{"T030", R"(union without its selector: nothing selects an alternative of '{}'
Directly before a union its structure lists the enumeration that selects the alternative:

    addr_type              type
    ip_address_type_union  address     // union ip_address_type_union by addr_type type)"};

inline constexpr Fault wrong_selector{"T031", R"(wrong selector: this does not select from '{}' as its type demands
The enumeration before a union has the type and the name that follow 'by' in the union's
declaration. It is the selector field of the union's own record.)"};

inline constexpr Fault duplicate_value{"T032", R"(value given twice: value {} selects another alternative already
Every value selects at most one alternative. An alternative may have several values: 3, 4: uint8 octet)"};

inline constexpr Fault large_value{"T033", R"(value too large: the value is over {}
Enumerations, and so the selectors of unions, are unsigned 32-bit numbers.)"};

inline constexpr Fault unknown_attribute{"T034", R"(unknown attribute: there is no attribute '{}'
A member or an alternative may be followed by attributes, each behind an '@'.)"};

inline constexpr Fault misplaced_attribute{"T035", R"(misplaced attribute: '{}' is out of place: {}
An attribute has no meaning where it does not belong, and giving one twice adds nothing.)"};

inline constexpr Fault enclosing_record{"T036", R"(union outside its record: '{}' cannot be in '{}': {}
A union declared 'in' a structure has no record of its own: its operations take that structure,
which holds the union once, directly behind its selector. No other structure can hold it. Leave out
'in' for a union that several structures use.)"};

inline constexpr Fault circular_type{"T037", R"(type that holds itself: '{}' holds itself
A record that holds itself, directly or through others, would have no end. Arrays, dynamic ones
included, and alternatives of unions count as held.)"};

inline constexpr Fault circular_families{"T038", R"(families that use each other: family '{}' uses '{}', which leads back to it
The header of a family includes those of the families that it uses, so use leads one way. Move what
they share to a family of its own.)"};

inline constexpr Fault fixed_size{"T039", R"(structure too large: '{}' takes {} bytes or more, and an element at most {}
Sizes of elements are 16-bit numbers. This structure exceeds them even with every array empty and
every union absent, so it could never be sent.)"};

inline constexpr Fault member_named_as_type{"T040", R"(member named as an enumeration: '{}' names both a member of '{}' and an enumeration that it uses
An enumeration is a plain type name in the C header. A field of that name would change what the name
means within the record, which C++ refuses: name the member 'action', not 'vlan_action'.)"};

inline constexpr Fault unknown_enumerator{"T041", R"(unknown enumerator: '{}' is no enumerator of '{}'
An alternative is chosen by numbers or by enumerators of the enumeration that the union is declared 'by':

    enum svrm_ip_type = 1225 { static = 0  dhcp = 1 }
    union svrm_conf_union by svrm_ip_type ip_type { static: svrm_addr_info addr_info  1: uint8 octet })"};

inline constexpr Fault duplicate_enumerator{"T042", R"(enumerator given twice: '{}' has that {} already
The enumerators of an enumeration have distinct names and distinct values, so that each value prints
as one name and each name reads as one value.)"};

inline constexpr Fault taken_name{"T043", R"(name that C or the library needs: '{}' cannot name a {}: {}
Names of types become global names of C headers, so they must not be those of the C library, of its macros or of this
library, in whose headers and programs they would collide: 'relay_time', not 'time'. Names of members live in their
records and only have to keep clear of macros: 'index', 'signal' and 'time' are good ones.)"};

inline constexpr Fault name_generated_twice{"T044", R"(name generated twice: '{}' comes out as '{}', which is taken
An enumerator becomes a macro that is called after its enumeration and itself: 'slow' of 'port_speed'
is port_speed_slow. A macro replaces its name everywhere, so no type, member or other enumerator may
have it. Rename one of the two.)"};

inline constexpr Fault nested_too_deeply{"T045", R"(types nested too deeply: '{}' nests types {} deep, and at most {} are allowed
Recursion of the library follows the nesting of types, and the stack that it promises to need holds
for this depth: scalars, members, items and alternatives each count one. Flatten the type.)"};

inline constexpr Fault path_too_long{"T046", R"(member path too long: a path in '{}' takes {} characters, and at most {} are allowed
Faults spell the whole way from the type to the member at fault in a buffer of fixed size. Shorten the
names of members, or nest the type less.)"};

inline constexpr Fault interface_changed{"T047", R"(interface that tlvc did not print: this line should be '{}'
Of the types in this file, 'tlvc interface' prints another line here: it has been changed by hand or damaged, since sizes
and offsets follow from the types, or another version of tlvc has printed it. Print it again from the schema.)"};

inline constexpr Fault library_tag{"T048", R"(tag that is the library's: tag {} is one of the library's
Tags up to 32767 are for types of the library, whose next version may give them out, and tlvmsg_register refuses
families that have them. Families of your own have the tags from 32768 to 65535; 'tlvc tags' prints free ones:

    struct acme_fan = 32768 { uint8 tray })"};

// Allowed, and yet hardly meant.

inline constexpr Fault array_never_full{"W001", R"(array that cannot travel when full: '{}' takes {} bytes when full, and an element at most {}
Sizes of elements are 16-bit numbers. A record has room for all items of the array, but they cannot be sent
at once. Lower the capacity, or send the items in several messages.)"};

inline constexpr Fault unused_enumeration{"W002", R"(enumeration that nothing uses: nothing uses '{}'
No member, array or union of the loaded files names the enumeration, so it takes a tag and is never sent.
It may be left over, or a member has the type uint32 that was meant to have this one.)"};

inline constexpr Fault undocumented_type{"W003", R"(undocumented type: '{}' has no documentation
What '///' lines say of a type is in the header, and in what tools show of it:

    /// Which relay, and how.
    struct zel_relay = 2001 { uint16 slot  uint16 port })"};

inline constexpr Fault library_name{"W005", R"(name that the library has: the library has a {} '{}'
Types of one name cannot be in one program, and <tlvmsg/voice.h> cannot be of two families. Begin with a name of your own.)"};

inline constexpr Fault char_member{"W006", R"(char as a member: '{}' is written under tag 1 and expected under tag 2
char exists for the sake of old messages. Write uint8, and declare text as bytes.)"};

inline constexpr Fault system_name{"W007", R"(name that system headers have: '{}' names a {} here, and something else in headers of the C library or of Linux
Programs that include such a header beside the generated one do not compile, as <netinet/ip.h> has a struct timestamp.
Others do. Begin the names of types with a name of your own: 'relay_timestamp'.)"};

inline constexpr const Fault *all[] = {
    &unexpected_character, &unterminated_string, &malformed_number, &misplaced_doc, &unexpected_token, &unclosed_body,
    &late_import, &import_not_found, &circular_import, &family_name, &family_split, &undefined_type,
    &type_not_imported, &duplicate_name, &duplicate_tag, &tag_out_of_range, &keyword_name, &duplicate_member,
    &empty_body, &message_used, &message_member, &array_element, &alternative_type, &zero_capacity, &large_capacity,
    &count_type, &missing_count, &wrong_count, &selector_type, &missing_selector, &wrong_selector, &duplicate_value,
    &large_value, &unknown_attribute, &misplaced_attribute, &enclosing_record, &circular_type, &circular_families,
    &fixed_size, &member_named_as_type, &unknown_enumerator, &duplicate_enumerator, &taken_name,
    &name_generated_twice, &nested_too_deeply, &path_too_long, &interface_changed, &library_tag,
    &array_never_full, &unused_enumeration, &undocumented_type, &library_name, &char_member, &system_name};
// clang-format on

} // namespace fault

} // namespace tlvc
