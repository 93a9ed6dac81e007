// Every fault the compiler can find: the catalogue of `tlvc check`. Codes are published, so new ones go to the end
// of their kind.
#pragma once

#include "compiler/text/paragraph.h"

#include <cstdint>
#include <fmt/core.h>
#include <string_view>

namespace tlvc {

enum class Severity { Error, Warning };

struct Fault {
    std::string_view code;
    std::string_view title;
    std::string_view message;     // a format string
    std::string_view explanation; // what the rule is for, with an example of the remedy

    constexpr Severity severity() const {
        return code.starts_with('W') ? Severity::Warning : Severity::Error;
    }
};

consteval size_t places_in(std::string_view format) {
    size_t places = 0;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format.substr(i).starts_with("{{")) {
            ++i;
        } else if (format[i] == '{') {
            ++places;
        }
    }
    return places;
}

// A fault whose message has a place for an argument of each of these types, or it does not compile.
template <typename... Args>
struct FaultOf : Fault {
    template <size_t size>
    consteval FaultOf(std::string_view code_, std::string_view title_, const char (&message_)[size],
                      std::string_view explanation_)
        : Fault{code_, title_, {message_, size - 1}, paragraph(explanation_)} {
        static_cast<void>(fmt::format_string<Args...>(message_)); // which refuses places without arguments
        if (places_in(message_) != sizeof...(Args)) {
            throw "an argument has no place in the message";
        }
    }
};

namespace fault {

using Text = std::string_view;
using Number = uint64_t;

// clang-format off

inline constexpr FaultOf<Text> unexpected_character{
    "T001", "unexpected character", "{} means nothing here",
    R"(
Outside remarks and quoted paths a schema consists of names, numbers and { } [ ] = : , @.
Members need no separator: write 'uint16 slot', not 'uint16 slot;'.
)"};

inline constexpr FaultOf<> unterminated_string{
    "T002", "unterminated string", "the closing quote is missing",
    "A quoted path ends on the line on which it begins: import \"../common/session.tlv\""};

inline constexpr FaultOf<Text> malformed_number{
    "T003", "malformed number", "'{}' is not a number",
    "Numbers are decimal digits, or 0x and hexadecimal digits: 1357 and 0x54D are the same."};

inline constexpr FaultOf<Text> misplaced_doc{
    "T004", "misplaced documentation", "{}",
    R"(
'//!' lines at the top of a file say what the file is for. '///' lines stand directly before the
declaration, the member, the alternative or the enumerator that they document, each on a line of its own:

    /// Counted from 0.
    uint16 slot

A remark that documents nothing begins with '//' and may stand anywhere.
)"};

inline constexpr FaultOf<Text, Text> unexpected_token{
    "T005", "unexpected text", "expected {}, found {}",
    R"(
The declarations are:

    enum NAME = TAG { NAME = VALUE ... }
    struct NAME = TAG { TYPE NAME ... }
    message NAME { TYPE NAME ... }
    message NAME key NUMBER { TYPE NAME ... }
    array NAME of TYPE[CAPACITY]
    bytes NAME[CAPACITY]
    dynamic array NAME of TYPE counted by COUNT
    dynamic bytes NAME counted by COUNT
    union NAME by ENUMERATION SELECTOR { VALUE: TYPE NAME ... }

Beside them, 'reserved TAG, TAG to TAG' says which tags must not come back, and in an enumeration which values;
'prefix BEGINNING' says how the names of a family's types begin. A structure declares an array that it alone has in place:

    TYPE[CAPACITY] NAME
    bytes[CAPACITY] NAME
    dynamic array NAME of TYPE counted by COUNT
    dynamic bytes NAME counted by COUNT
)"};

inline constexpr FaultOf<Text> unclosed_body{
    "T006", "unclosed body", "expected a member or '}}', found {}",
    R"(
The body of an enumeration, a structure, a message or a union ends with '}'. Declarations do not nest, so the line
that begins the next one shows that the brace is missing.
)"};

inline constexpr FaultOf<> late_import{
    "T007", "late import", "an import stands before the first declaration",
    "Imports come first, so that the top of a file shows what it depends on."};

inline constexpr FaultOf<Text> import_not_found{
    "T008", "import not found", "cannot find '{}'",
    R"(
The path of an import is relative to the directory of the file that imports, whatever the current
directory is: import "../common/session.tlv"
)"};

inline constexpr FaultOf<Text> circular_import{
    "T009", "circular import", "'{}' imports itself",
    "Imports lead one way. Move what the files share to a third file that imports none of them."};

inline constexpr FaultOf<Text, Text> family_name{
    "T010", "unusable family name", "the directory '{}' cannot name a family: {}",
    R"(
A family is the directory that holds a schema file. Its name becomes that of a header, so it is made of letters, digits
and underscores, begins with no digit, and is none of those that the library has: all, codes, forms, inspect, record,
register, runtime, tlvmsg, tlvmsg_format, tlvmsg_forms, tlvmsg_json, typed, types, version. Write 'voice_ports', not
'voice-ports'.
)"};

inline constexpr FaultOf<Text> family_split{
    "T011", "family in two directories", "another directory is the family '{}' already",
    "A family is one directory, and two families of one name would generate the same files. Rename one."};

inline constexpr FaultOf<Text> undefined_type{
    "T012", "undefined type", "type '{}' is not defined",
    R"(
No loaded file declares the type. Files are loaded when they are named on the command line or imported by a loaded
file. Predefined are char, uint8, int8, uint16, int16, uint32, int32, uint64 and int64.
)"};

inline constexpr FaultOf<Text> type_not_imported{
    "T013", "type not imported", "type '{}' is declared in a file that is not imported",
    R"(
A file uses its own types and those of the files that it imports itself. What these import in turn
is not passed on, so that every dependency can be read at the top of the file.
)"};

inline constexpr FaultOf<Text> duplicate_name{
    "T014", "name declared twice", "'{}' is declared already",
    "Names of types become names of C records and functions, so they are unique over all files."};

inline constexpr FaultOf<Number> duplicate_tag{
    "T015", "tag used twice", "tag {} is taken",
    R"(
A receiver tells elements apart by their tags, so no two enumerations or structures share one. A tag
that was in use must not come back with another meaning: take a number that was never used.
)"};

inline constexpr FaultOf<Number, Number> tag_out_of_range{
    "T016", "tag out of range", "a tag is a number from {} to {}",
    R"(
Tags travel in 16 bits, and those up to 1000 are kept for scalars, arrays and future use. Families of your own have
those from 32768 on.
)"};

inline constexpr FaultOf<Text> keyword_name{
    "T017", "keyword as a name", "'{}' is a keyword of C or C++",
    R"(
Names of types, members and selectors appear in headers for C and C++. Write 'class_', for instance,
or better a word that says more.
)"};

inline constexpr FaultOf<Text, Text> duplicate_member{
    "T018", "member name used twice", "'{}' is the name of another member of '{}'",
    R"(
The members of a record have distinct names, and so have the alternatives and the selector of a
union. The count before a dynamic array and the selector before a union become fields of the array's
or union's own record; they alone may share a name with a neighbour.
)"};

inline constexpr FaultOf<Text> empty_body{
    "T019", "empty body", "'{}' has no members",
    "C has no empty records. A structure that carries nothing can hold one scalar that is always 0."};

inline constexpr FaultOf<Text> message_used{
    "T020", "message used as a type", "message '{}' cannot be part of another type",
    R"(
A message has no tag, so a receiver could not tell where it begins or ends inside another element.
Declare what the two share as a structure.
)"};

inline constexpr FaultOf<Text, Text> message_member{
    "T021", "bare value in a message", "'{}' is {}: a message holds structures and enumerations",
    "Members of a message are recognised by their tags. Put scalars, arrays and unions into a structure."};

inline constexpr FaultOf<Text, Text, Text> array_element{
    "T022", "type that an array cannot hold", "'{}' is {} and cannot be the element of {}",
    R"(
An array with a capacity holds integers of 16, 32 or 64 bits, enumerations or structures; a dynamic
array holds enumerations or structures. Wrap anything else in a structure, but for bytes, which have their own forms:

    bytes[32]      serial_number
    uint8          count
    dynamic bytes  if_name counted by uint8
)"};

inline constexpr FaultOf<Text, Text> alternative_type{
    "T023", "type that cannot be an alternative", "'{}' is {} and cannot be an alternative",
    R"(
An alternative is a scalar, an enumeration or a structure: one element, with no count or selector
that would have to stand before it. Wrap anything else in a structure.
)"};

inline constexpr FaultOf<Text> zero_capacity{
    "T024", "capacity of 0", "'{}' has room for nothing",
    "The record of an array has room for as many elements as the capacity says, and C has no empty arrays."};

inline constexpr FaultOf<Text, Number> large_capacity{
    "T025", "capacity too large", "the capacity of '{}' is over {}",
    "The count of an array travels in 16 bits, so elements beyond 65,535 could never be sent."};

inline constexpr FaultOf<Text, Text> count_type{
    "T026", "type that cannot count", "'{}' cannot count {}",
    R"(
The count of dynamic elements is a uint8 or a uint16; that of dynamic bytes may be a uint32 as well.
On the wire an array's own count is 16 bits wide, whatever its record has.
)"};

inline constexpr FaultOf<Text> missing_count{
    "T027", "dynamic array without its count", "nothing counts '{}'",
    R"(
Directly before a dynamic array its structure lists the scalar that counts it:

    uint8          count
    dynamic bytes  name counted by uint8
)"};

inline constexpr FaultOf<Text> wrong_count{
    "T028", "wrong count", "this does not count '{}' as its type demands",
    R"(
The count before a dynamic array is named 'count' and has the type that the array is 'counted by'.
It is the count field of the array's own record.
)"};

inline constexpr FaultOf<Text, Text> selector_type{
    "T029", "selector that is no enumeration", "'{}' is {}: an enumeration selects",
    R"(
A union is declared 'by' the enumeration whose value selects the alternative:

    union ip_address_type_union by addr_type type { 1: ipv4_addr ipv4 }
)"};

inline constexpr FaultOf<Text> missing_selector{
    "T030", "union without its selector", "nothing selects an alternative of '{}'",
    R"(
Directly before a union its structure lists the enumeration that selects the alternative:

    addr_type              type
    ip_address_type_union  address     // union ip_address_type_union by addr_type type
)"};

inline constexpr FaultOf<Text> wrong_selector{
    "T031", "wrong selector", "this does not select from '{}' as its type demands",
    R"(
The enumeration before a union has the type and the name that follow 'by' in the union's
declaration. It is the selector field of the union's own record.
)"};

inline constexpr FaultOf<Number> duplicate_value{
    "T032", "value given twice", "value {} selects another alternative already",
    "Every value selects at most one alternative. An alternative may have several values: 3, 4: uint8 octet"};

inline constexpr FaultOf<Number> large_value{
    "T033", "value too large", "the value is over {}",
    "Enumerations, and so the selectors of unions, are unsigned 32-bit numbers."};

inline constexpr FaultOf<Text> unknown_attribute{
    "T034", "unknown attribute", "there is no attribute '{}'",
    "A member or an alternative may be followed by attributes, each behind an '@'."};

inline constexpr FaultOf<Text, Text> misplaced_attribute{
    "T035", "misplaced attribute", "'{}' is out of place: {}",
    "An attribute has no meaning where it does not belong, and giving one twice adds nothing."};

inline constexpr FaultOf<Text, Text, Text> enclosing_record{
    "T036", "union outside its record", "'{}' cannot be in '{}': {}",
    R"(
A union declared 'in' a structure has no record of its own: its operations take that structure,
which holds the union once, directly behind its selector. No other structure can hold it. Leave out
'in' for a union that several structures use.
)"};

inline constexpr FaultOf<Text> circular_type{
    "T037", "type that holds itself", "'{}' holds itself",
    R"(
A record that holds itself, directly or through others, would have no end. Arrays, dynamic ones
included, and alternatives of unions count as held.
)"};

inline constexpr FaultOf<Text, Text> circular_families{
    "T038", "families that use each other", "family '{}' uses '{}', which leads back to it",
    R"(
The header of a family includes those of the families that it uses, so use leads one way. Move what
they share to a family of its own.
)"};

inline constexpr FaultOf<Text, Number, Number> fixed_size{
    "T039", "structure too large", "'{}' takes {} bytes or more, and an element at most {}",
    R"(
Sizes of elements are 16-bit numbers. This structure exceeds them even with every array empty and
every union absent, so it could never be sent.
)"};

inline constexpr FaultOf<Text, Text> member_named_as_type{
    "T040", "member named as an enumeration",
    "'{}' names both a member of '{}' and an enumeration that it uses",
    R"(
An enumeration is a plain type name in the C header. A field of that name would change what the name
means within the record, which C++ refuses: name the member 'action', not 'vlan_action'.
)"};

inline constexpr FaultOf<Text, Text> unknown_enumerator{
    "T041", "unknown enumerator", "'{}' is no enumerator of '{}'",
    R"(
An alternative is chosen by numbers or by enumerators of the enumeration that the union is declared 'by':

    enum svrm_ip_type = 1225 { static = 0  dhcp = 1 }
    union svrm_conf_union by svrm_ip_type ip_type { static: svrm_addr_info addr_info  1: uint8 octet }
)"};

inline constexpr FaultOf<Text, Text> duplicate_enumerator{
    "T042", "enumerator given twice", "'{}' has that {} already",
    R"(
The enumerators of an enumeration have distinct names and distinct values, so that each value prints
as one name and each name reads as one value.
)"};

inline constexpr FaultOf<Text, Text, Text> taken_name{
    "T043", "name that C or the library needs", "'{}' cannot name a {}: {}",
    R"(
Names of types become global names of C headers, so they must not be those of the C library, of its macros or of this
library, in whose headers and programs they would collide: 'relay_time', not 'time'. Names of members live in their
records and only have to keep clear of macros: 'index', 'signal' and 'time' are good ones.
)"};

inline constexpr FaultOf<Text, Text> name_generated_twice{
    "T044", "name generated twice", "'{}' comes out as '{}', which is taken",
    R"(
An enumerator becomes a macro that is called after its enumeration and itself: 'slow' of 'port_speed'
is port_speed_slow. An alternative becomes one that is called after its union and itself: 'ipv4' of
'address' is TLVMSG_CHOICE_address_ipv4. A macro replaces its name everywhere, so no type, member,
other enumerator or alternative may have it: 'b_c' of 'a' and 'c' of 'a_b' come out the same. Rename
one of the two.
)"};

inline constexpr FaultOf<Text, Number, Number> nested_too_deeply{
    "T045", "types nested too deeply", "'{}' nests types {} deep, and at most {} are allowed",
    R"(
Recursion of the library follows the nesting of types, and the stack that it promises to need holds
for this depth: scalars, members, items and alternatives each count one. Flatten the type.
)"};

inline constexpr FaultOf<Text, Number, Number> path_too_long{
    "T046", "member path too long", "a path in '{}' takes {} characters, and at most {} are allowed",
    R"(
Faults spell the whole way from the type to the member at fault in a buffer of fixed size. Shorten the
names of members, or nest the type less.
)"};

inline constexpr FaultOf<Text> interface_changed{
    "T047", "interface that tlvc did not print", "this line should be '{}'",
    "Of the types in this file, 'tlvc interface' prints another line here: it has been changed by hand or "
    "damaged, since sizes\n"
    "and offsets follow from the types, or another version of tlvc has printed it. Print it again from the schema."};

inline constexpr FaultOf<Number> library_tag{
    "T048", "tag that is the library's", "tag {} is one of the library's",
    R"(
Tags up to 32767 are for types of the library, whose next version may give them out, and tlvmsg_register refuses
families that have them. Families of your own have the tags from 32768 to 65535; 'tlvc tags' prints free ones:

    struct acme_fan = 32768 { uint8 tray }
)"};

inline constexpr FaultOf<Text, Number> reserved_number{
    "T049", "reserved number", "{} {} is reserved",
    R"(
Tags and values that were in use and are gone are reserved, so that they do not come back with another meaning: peers
of an earlier version may still send them. Take a number that was never used:

    reserved 40002, 40010 to 40020
    enum acme_fan_mode = 40003 { off = 0  on = 1  reserved 2 }
)"};

inline constexpr FaultOf<Text> bad_reservation{
    "T050", "reservation at fault", "{}",
    R"(
A reservation lists single numbers, and ranges from the lower number to the higher one, both of which belong to it.
Each number is reserved once in a family or enumeration.
)"};

inline constexpr FaultOf<Text, Text> unprefixed_name{
    "T051", "name without the prefix", "'{}' does not begin with '{}'",
    R"(
A family that declares a prefix promises that the names of its types begin with it, and so those of their functions and
macros end in such names: they keep clear of other families' in the same program.
)"};

inline constexpr FaultOf<Text> bad_prefix{
    "T052", "prefix at fault", "{}",
    R"(
A family has one prefix or none. It is the family's own: no type of another family that has a prefix, and none of the
library, begins with it, or else the linker would find two functions of one name.
)"};

inline constexpr FaultOf<Number> duplicate_key{
    "T053", "message key used twice", "key {} is taken",
    R"(
A key is the number by which receivers know a message, so no two messages of a family have the same:

    message fan_report_message key 17 { app_sess_hdr session  fan_list list }
    message fan_alarm_message key 18 { app_sess_hdr session  fan_list list }
)"};

inline constexpr FaultOf<Text, Number, Text, Number> type_too_large{
    "T054", "type too large", "'{}' takes {} bytes {}, and at most {} are allowed",
    R"(
Arrays in arrays have room for the product of their capacities, whether or not it can be sent. Lower the
capacities, or use dynamic arrays.
)"};

// Allowed, and yet hardly meant.

inline constexpr FaultOf<Text, Number, Number> array_never_full{
    "W001", "array that cannot travel when full", "'{}' takes {} bytes when full, and an element at most {}",
    R"(
Sizes of elements are 16-bit numbers. A record has room for all items of the array, but they cannot be sent
at once. Lower the capacity, or send the items in several messages.
)"};

inline constexpr FaultOf<Text> unused_enumeration{
    "W002", "enumeration that nothing uses", "nothing uses '{}'",
    R"(
No member, array or union of the loaded files names the enumeration, so it takes a tag and is never sent.
It may be left over, or a member has the type uint32 that was meant to have this one.
)"};

inline constexpr FaultOf<Text> undocumented_type{
    "W003", "undocumented type", "'{}' has no documentation",
    R"(
What '///' lines say of a type is in the header, and in what tools show of it:

    /// Which relay, and how.
    struct zel_relay = 2001 { uint16 slot  uint16 port }
)"};

inline constexpr FaultOf<Text, Text> library_name{
    "W005", "name that the library has", "the library has a {} '{}'",
    "Types of one name cannot be in one program, and <tlvmsg/voice.h> cannot be of two families. Begin "
    "with a name of your own."};

inline constexpr FaultOf<Text> char_member{
    "W006", "char as a member", "'{}' is written under tag 1 and expected under tag 2",
    "char exists for the sake of old messages. Write uint8, and declare text as bytes."};

inline constexpr FaultOf<Text, Text> system_name{
    "W007", "name that system headers have",
    "'{}' names a {} here, and something else in headers of the C library or of Linux",
    R"(
Programs that include such a header beside the generated one do not compile, as <netinet/ip.h> has a struct timestamp.
Others do. Begin the names of types with a name of your own: 'relay_timestamp'.
)"};

inline constexpr FaultOf<Text> idle_silence{
    "W008", "remark that silences no warning", "this remark silences no warning: {}",
    R"(
A warning that is known and meant to stay is silenced on its line, or by a remark on the lines before, with the reason:

    // tlvc: W002 because only programs of others use it
    enum relay_mode = 32770

Several codes are separated by commas. A remark whose warning is no longer there would hide the next one: remove it.
)"};

inline constexpr const Fault *all[] = {
    &unexpected_character, &unterminated_string, &malformed_number, &misplaced_doc, &unexpected_token, &unclosed_body,
    &late_import, &import_not_found, &circular_import, &family_name, &family_split, &undefined_type,
    &type_not_imported, &duplicate_name, &duplicate_tag, &tag_out_of_range, &keyword_name, &duplicate_member,
    &empty_body, &message_used, &message_member, &array_element, &alternative_type, &zero_capacity, &large_capacity,
    &count_type, &missing_count, &wrong_count, &selector_type, &missing_selector, &wrong_selector, &duplicate_value,
    &large_value, &unknown_attribute, &misplaced_attribute, &enclosing_record, &circular_type, &circular_families,
    &fixed_size, &member_named_as_type, &unknown_enumerator, &duplicate_enumerator, &taken_name,
    &name_generated_twice, &nested_too_deeply, &path_too_long, &interface_changed, &library_tag,
    &reserved_number, &bad_reservation, &unprefixed_name, &bad_prefix, &duplicate_key, &type_too_large,
    &array_never_full, &unused_enumeration, &undocumented_type, &library_name, &char_member, &system_name,
    &idle_silence};
// clang-format on

} // namespace fault

} // namespace tlvc
