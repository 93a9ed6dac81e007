// Every way in which one schema can differ from another that peers and programs may notice: the catalogue of
// `tlvc compare`. Codes are published, so new ones go to the end.
#pragma once

#include "compiler/text/paragraph.h"

#include <string>
#include <string_view>
#include <vector>

namespace tlvc {

// What a change breaks. Several levels are one number, their sum.
using Levels = unsigned;
enum Level : Levels {
    Nothing = 0,
    Wire = 1,   // either side refuses what the other sends, or reads something else from it
    Json = 2,   // a document that the old side wrote is refused now, or read into another record
    Source = 4, // a program for the old headers does not compile now, or means something else
    Layout = 8, // records of programs built with the old headers do not fit libraries built with the new ones
    LayoutIfResized = 16, // of a rule: Layout when the record gets another size or alignment
};
inline constexpr Levels all_levels = Wire | Json | Source | Layout;

std::vector<std::string_view> names_in(Levels levels);
std::string names_of(Levels levels); // "wire, layout"; "nothing"

// Schemas, of which a path may precede the text. From `before` to `after` is a change that the rule is about and no
// other; from `before` to `harmless` is one that breaks nothing.
struct Example {
    std::string_view before;
    std::string_view after;
    std::string_view harmless;
};

struct Rule {
    std::string_view code;
    Levels levels; // the most that it breaks
    std::string_view title;
    std::string_view effect; // what comes of the change
    std::string_view explanation;
    Example example; // empty where the finding is no change of a schema

    constexpr Rule(std::string_view code_, Levels levels_, std::string_view title_, std::string_view effect_,
                   std::string_view explanation_, Example example_ = {})
        : code(code_), levels(levels_), title(title_), effect(effect_), explanation(paragraph(explanation_)),
          example(example_) {}
};

// clang-format off

inline constexpr Rule type_removed{
    "C001", all_levels, "type removed", "peers and programs that have it still use it",
    "Peers go on sending it, and built programs call functions that are gone. Keep the type; new ones "
    "can stand beside it.",
    {"enum state = 2001  struct port = 2002 { uint16 slot }",
     "reserved 2002  enum state = 2001",
     "struct port = 2002 { uint16 slot }  enum state = 2001"}};

inline constexpr Rule type_added{
    "C002", Nothing, "type added", "nobody depends on it yet",
    "A new type is a tag and names that nobody had. Members of that type are changes of their own.",
    {"enum state = 2001  enum mode = 2002",
     "enum state = 2001  enum mode = 2002  enum more = 2003",
     "enum mode = 2002  enum state = 2001"}};

inline constexpr Rule type_renamed{
    "C003", Source, "type renamed", "functions and macros are called after it",
    R"(
A renamed type is known again by its tag, a message by its members, an array or union by where it stands or, where
nothing holds it, by what it is made of.
)",
    {"enum state = 2001",
     "enum relay_state = 2001",
     "enum state = 2001 { relay = 1 }"}};

inline constexpr Rule family_moved{
    "C004", Source, "moved to another family", "programs include another header",
    "A family is a header, whatever files are in its directory. It is not compared when either side is "
    "a single file.",
    {"relay/a.tlv: enum state = 2001",
     "alarm/a.tlv: enum state = 2001",
     "relay/b.tlv: enum state = 2001"}};

inline constexpr Rule tag_changed{
    "C005", Wire, "tag changed", "each side takes the other's element for something else",
    "Elements are told apart by their tags. One that was in use must not come back with another "
    "meaning, either.",
    {"enum state = 2001",
     "reserved 2001  enum state = 2002",
     "enum state = 2001  enum mode = 2002"}};

inline constexpr Rule kind_changed{
    "C006", all_levels, "kind changed", "it is another type under the old name",
    "Even where the bytes were the same, its record and its functions are not. Declare a new type.",
    {"struct s = 2001 { uint8 a }  message m { s part }",
     "struct s = 2001 { uint8 a }  struct m = 2002 { s part }",
     "struct s = 2001 { uint8 a }  message m { s part }  struct n = 2002 { s part }"}};

inline constexpr Rule member_removed{
    "C007", all_levels, "member removed", "old decoders miss it, and what stands behind it",
    "An old decoder stops where it should be, or takes what follows for it. Keep it, and say that "
    "nobody reads it.",
    {"struct port = 2001 { uint16 slot  uint8 kind }",
     "struct port = 2001 { uint16 slot }",
     "struct port = 2001 { uint16 slot  uint8 kind }  struct port_only = 2002 { uint16 slot }"}};

inline constexpr Rule member_inserted{
    "C008", Wire | Source | Layout, "member inserted", "decoders stop where the other side's members differ",
    "Members are found by their order alone, also by initializers that do not name them. New ones go to "
    "the end.",
    {"struct port = 2001 { uint16 slot }",
     "struct port = 2001 { uint8 kind  uint16 slot }",
     "struct port = 2001 { uint16 slot }  struct kind_and_port = 2002 { uint8 kind  port port }"}};

inline constexpr Rule member_appended{
    "C009", Layout, "member appended", "old decoders skip it, and new ones see that it is absent",
    R"(
A structure ends where its own length says, so old decoders pass over the rest. New ones see by the tag of what
follows that it is absent, and leave it zero and empty. Records that hold it grow, too.
)",
    {"struct port = 2001 { uint16 slot }  enum end = 2002  message m { port port  end last }",
     "struct port = 2001 { uint16 slot  uint16 unit }  enum end = 2002  message m { port port  end last }",
     "struct port = 2001 { uint16 slot }  message m { port port  end last }  enum end = 2002"}};

inline constexpr Rule member_missed{
    "C010", Wire | Layout, "appended member that old peers lack", "new decoders look for it in what follows",
    R"(
Behind an old peer's structure, an element of the member's tag is taken for it. At the end of a message there is
nothing: the bounded decoder calls the input truncated, the exact one reads on. Declare a new message.
)",
    {"struct port = 2001 { uint16 slot }  message m { port port }",
     "struct port = 2001 { uint16 slot  uint16 unit }  message m { port port }",
     "struct port = 2001 { uint16 slot }  message m { port port }  message n { port port }"}};

inline constexpr Rule message_extended{
    "C011", Wire | Layout, "message extended", "new decoders refuse what old peers send",
    "A message has no length to tell what is absent. Old decoders ignore the rest: it may do where only "
    "new peers send.",
    {"struct port = 2001 { uint16 slot }  message m { port port }",
     "struct port = 2001 { uint16 slot }  message m { port port  port other }",
     "struct port = 2001 { uint16 slot }  message m { port port }  message n { port port  port other }"}};

inline constexpr Rule order_changed{
    "C012", Wire | Source | Layout, "order of members changed", "each side reads one member as another",
    "Members are found by their order alone. That of enumerators, alternatives and declarations is free.",
    {"enum e = 2002  struct port = 2001 { uint16 slot  uint16 unit }",
     "enum e = 2002  struct port = 2001 { uint16 unit  uint16 slot }",
     "struct port = 2001 { uint16 slot  uint16 unit }  enum e = 2002"}};

inline constexpr Rule type_changed{
    "C013", all_levels, "type of a part changed", "each side expects another element there",
    R"(
Numbers of another size or sign have another tag. Documents hold when what they say fits the new type: every old
number and its names, or members of the same names. To programs every enumeration is a uint32_t.
The count of a dynamic array is such a number: where its tag is another, decoders find no items, be there few or many.
)",
    {"struct port = 2001 { uint16 slot }",
     "struct port = 2001 { uint8 slot }",
     "struct port = 2001 { uint16 slot }  struct narrow_port = 2002 { uint8 slot }"}};

inline constexpr Rule name_changed{
    "C014", Json | Source, "part renamed", "documents and programs name it",
    "Names do not travel, so peers do not notice. A renamed part is known again by its type and place.",
    {"struct port = 2001 { uint16 slot }",
     "struct port = 2001 { uint16 place }",
     "struct port = 2001 { uint16 slot }  struct place = 2002 { uint16 place }"}};

inline constexpr Rule record_changed{
    "C015", Json | Source | Layout, "member moved to another record",
    "documents and programs look for it elsewhere",
    R"(
A selector lives in the record of its union, or beside it when the union is 'in' its structure. Layouts hold when
every field stays at its offset and the union begins its structure, which its functions take then.
)",
    {"enum kind = 2001  union u by kind which { 1: uint8 a }  struct s = 2002 { uint8 b  kind which  u u }",
     "enum kind = 2001  union u by kind which in s { 1: uint8 a }  struct s = 2002 { uint8 b  kind "
     "which  u u }",
     "enum kind = 2001  struct s = 2002 { uint8 b  kind which  u u }  union u by kind which { 1: uint8 a }"}};

inline constexpr Rule attribute_changed{
    "C016", Wire, "attribute changed", "the sides read damaged elements differently",
    "Attributes decide what is read where an element is absent or not what it should be.",
    {"struct s = 2001 { uint8 count  names names }  dynamic bytes names counted by uint8",
     "struct s = 2001 { uint8 count  names names @zero_count }  dynamic bytes names counted by uint8",
     "dynamic bytes names counted by uint8  struct s = 2001 { uint8 count  names names }"}};

inline constexpr Rule room_grown{
    "C017", Wire | LayoutIfResized, "capacity grown", "old decoders refuse or overrun what exceeds theirs",
    "The exact decoder stores as many items as came. Declare a new array for peers that take more. Old "
    "documents hold.",
    {"bytes serial[8]",
     "bytes serial[12]",
     "bytes serial[8]  bytes long_serial[12]"}};

inline constexpr Rule room_shrunk{
    "C018", Wire | Json | LayoutIfResized, "capacity shrunk",
    "new decoders refuse or overrun what exceeds theirs",
    "Old peers go on sending as much as they can hold, and documents have it.",
    {"bytes serial[12]",
     "bytes serial[8]",
     "bytes serial[12]  bytes short_serial[8]"}};

inline constexpr Rule enumerator_added{
    "C019", Nothing, "enumerator added", "the value could always occur",
    "Values without a name are sent and taken like others. Documents say the name from now on, and may "
    "still say the number.",
    {"enum state = 2001 { open = 0  closed = 1 }",
     "enum state = 2001 { open = 0  closed = 1  stuck = 2 }",
     "enum state = 2001 { closed = 1  open = 0 }"}};

inline constexpr Rule enumerator_removed{
    "C020", Json | Source, "enumerator removed", "documents and programs name it",
    "The number stays valid, but the name means nothing any more.",
    {"enum state = 2001 { open = 0  closed = 1 }",
     "enum state = 2001 { open = 0  reserved 1 }",
     "enum state = 2001 { closed = 1  open = 0 }"}};

inline constexpr Rule enumerator_renamed{
    "C021", Json | Source, "enumerator renamed", "documents and programs name it",
    "Numbers travel, names do not, so peers do not notice.",
    {"enum state = 2001 { open = 0 }",
     "enum state = 2001 { opened = 0 }",
     "enum state = 2001 { open = 0  opened = 1 }"}};

inline constexpr Rule enumerator_value{
    "C022", Wire | Json, "enumerator's value changed", "the sides mean different things by a number",
    "Numbers travel, and documents say names: each comes out as something else on the other side.",
    {"enum state = 2001 { open = 0 }",
     "enum state = 2001 { open = 1  reserved 0 }",
     "enum state = 2001 { open = 0  closed = 1 }"}};

inline constexpr Rule choice_added{
    "C023", LayoutIfResized, "value chooses, at the end of structures", "old decoders skip what it chooses",
    "This holds for values that old peers do not send. Where they have a name for it, or it is 0, the "
    "wire breaks.",
    {"enum kind = 2001  union u by kind which { 1: uint8 a }  struct s = 2002 { kind which  u u }",
     "enum kind = 2001  union u by kind which { 1: uint8 a  2: uint64 b }  struct s = 2002 { kind which "
     " u u }",
     "enum kind = 2001 { first = 1 }  union u by kind which { first: uint8 a }  struct s = 2002 { kind "
     "which  u u }"}};

inline constexpr Rule choice_inserted{
    "C024", Wire | LayoutIfResized, "value chooses, before other members",
    "old decoders miss the members behind",
    "They stop at an element that they do not expect. A union at the end of its structures can get "
    "alternatives.",
    {"enum kind = 2001  union u by kind which { 1: uint8 a }  struct s = 2002 { kind which  u u  kind last }",
     "enum kind = 2001  union u by kind which { 1: uint8 a  2: uint64 b }  struct s = 2002 { kind which "
     " u u  kind last }",
     "enum kind = 2001 { two = 2 }  union u by kind which { 1: uint8 a }  struct s = 2002 { kind which  "
     "u u  kind last }"}};

inline constexpr Rule choice_removed{
    "C025", Wire | Json | Source | LayoutIfResized, "alternative or its value removed",
    "one side misses what the other sends or expects",
    "New decoders stop at what they do not expect, old ones where nothing comes. Keep it, and say that "
    "nobody sends it.",
    {"enum kind = 2001  union u by kind which { 1: uint8 a  2: uint64 b }",
     "enum kind = 2001  union u by kind which { 1: uint8 a }",
     "enum kind = 2001  union u by kind which { 2: uint64 b  1: uint8 a }"}};

inline constexpr Rule choice_changed{
    "C026", Wire | Json, "value chooses something else", "each side expects another element",
    "A value belongs to its alternative for good.",
    {"enum kind = 2001  union u by kind which { 1, 2: uint8 a  3: uint8 b }",
     "enum kind = 2001  union u by kind which { 1: uint8 a  2, 3: uint8 b }",
     "enum kind = 2001  union u by kind which { 2, 1: uint8 a  3: uint8 b }"}};

inline constexpr Rule member_filled{
    "C027", Wire | Layout, "appended member that seems sent", "new decoders fill it where old peers lack it",
    R"(
An array with a capacity that is absent is read as full: as many items as it has room for, all zero. An absent selector
is 0, and what a union has for 0 seems chosen. Programs see what nobody sent, and pass it on. Put the array into a
structure of its own, which is empty where it is absent, or declare it dynamic; let 0 choose nothing.
)",
    {"bytes l[64]  enum e = 2001  struct p = 2002 { uint16 slot }  message m { p port  e end }",
     "bytes l[64]  enum e = 2001  struct p = 2002 { uint16 slot  l label }  message m { p port  e end }",
     "bytes l[64]  enum e = 2001  struct p = 2002 { uint16 slot }  message m { p port  e end }  struct "
     "q = 2003 { l label }"}};

// No change of a schema, but why changes may have been overlooked.
inline constexpr Rule file_shared{
    "C028", Nothing, "file read for both sides", "whether it has changed cannot be told",
    R"(
An import of OLD and one of NEW lead to the same file, so each side has the types in it as they are now. When they have
changed since OLD was released, say with --old-import where the old ones are, and with --new-import where the new
ones are. What 'tlvc interface' printed has no imports: it holds all types that it needs.
)"};

inline constexpr Rule tag_freed{
    "C030", Wire, "tag not reserved", "nothing keeps it from coming back with another meaning",
    "Old peers may still send what had it. Write 'reserved 2001' in a file of the family: then a type that takes the "
    "tag is refused.",
    {"enum state = 2001",
     "enum state = 2002",
     "enum state = 2001  reserved 2002"}};

inline constexpr Rule value_freed{
    "C031", Json | Source, "value not reserved", "nothing keeps it from coming back with another meaning",
    "Documents and programs may still have it. Write 'reserved 1' in the enumeration: then a name for the value is "
    "refused.",
    {"enum state = 2001 { open = 0  closed = 1 }",
     "enum state = 2001 { open = 0 }",
     "enum state = 2001 { open = 0  closed = 1  reserved 2 }"}};

inline constexpr Rule tag_unreserved{
    "C032", Wire, "tags no longer reserved", "a type may take what was in use",
    "A reservation stays as long as a peer may send what had the tag, which nobody can tell.",
    {"reserved 2002 to 2004  enum state = 2001",
     "reserved 2002  enum state = 2001",
     "reserved 2002, 2003 to 2005  enum state = 2001"}};

inline constexpr Rule value_unreserved{
    "C033", Json | Source, "values no longer reserved", "a name may take what was in use",
    "A reservation stays as long as a document or a program may have the value.",
    {"enum state = 2001 { reserved 1, 2 }",
     "enum state = 2001 { reserved 1 }",
     "enum state = 2001 { next = 3  reserved 1 to 2 }"}};

// No change either, but a line of the file of exceptions.
inline constexpr Rule exception_idle{
    "C029", Nothing, "exception that applies to nothing", "what it is to allow is not told",
    R"(
A line of the file that --exceptions names allows one change that breaks something: the rule's code, the type or
TYPE.MEMBER as compare names it, and the reason. One that fits no change any more would hide the next one: remove it.

    C016 fan_status.flags no receiver of 1.2 has ever looked at it
)"};

inline constexpr Rule key_changed{
    "C034", Wire, "key of a message changed", "receivers know it by its key, and take it for another or for none",
    "Old peers go on sending the old key. A key belongs to its message for good, and another message has another "
    "one. To add a key breaks nothing.",
    {"enum e = 2001  message m key 17 { e x }",
     "enum e = 2001  message m key 18 { e x }",
     "enum e = 2001  message m key 17 { e x }  message n key 18 { e x }"}};

// clang-format on

inline constexpr const Rule *rules[] = {
    &type_removed,       &type_added,       &type_renamed,     &family_moved,     &tag_changed,
    &kind_changed,       &member_removed,   &member_inserted,  &member_appended,  &member_missed,
    &message_extended,   &order_changed,    &type_changed,     &name_changed,     &record_changed,
    &attribute_changed,  &room_grown,       &room_shrunk,      &enumerator_added, &enumerator_removed,
    &enumerator_renamed, &enumerator_value, &choice_added,     &choice_inserted,  &choice_removed,
    &choice_changed,     &member_filled,    &file_shared,      &exception_idle,   &tag_freed,
    &value_freed,        &tag_unreserved,   &value_unreserved, &key_changed};

} // namespace tlvc
