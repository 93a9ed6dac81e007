// The content of a schema file before any name in it is looked up. Names are views into the file's text.
#pragma once

#include "compiler/text/source.h"

#include <memory>
#include <optional>

namespace tlvc::syntax {

struct Name {
    std::string_view text;
    Span span;
};

struct Number {
    uint64_t value = 0; // the greatest uint64_t if it is greater still: every limit is far below
    Span span;
};

struct Doc {
    std::vector<std::string> lines; // without the slashes
    Span span;
};

// A value that chooses an alternative: a number, or an enumerator's name.
struct Value {
    std::string_view name; // empty for a number
    uint64_t number = 0;
    Span span;
};

struct NumberRange {
    Number first;
    Number last; // the first where it is alone
    Span span;
};

struct Reservation {
    std::vector<NumberRange> ranges;
    Span span;
};

struct Enumerator {
    Doc doc;
    Name name;
    Number value;
    Span span; // documentation included
};

struct Member {
    Doc doc;
    std::vector<Value> values; // an alternative's; a member has none
    Name type;
    Name name;
    std::vector<Name> attributes; // without the '@'
    std::optional<size_t> array;  // its type's declaration among the file's, if that is in place
    Span span;                    // documentation included
};

enum class Form { Enumeration, Structure, Message, Array, Bytes, DynamicArray, DynamicBytes, Union };

struct Declaration {
    Form form = Form::Enumeration;
    Doc doc;
    Name name;
    Number number;      // the tag of an enumeration or structure, the capacity of an array or bytes
    Name element;       // array, dynamic array
    Name count;         // dynamic
    Name selector;      // union
    Name selector_name; // union
    std::optional<Name> enclosing;       // union
    std::optional<Number> key;           // message
    std::optional<Name> member;          // of an array that is declared in place: its member
    Span body;                           // the braces and what is between; empty where there are none
    std::vector<Member> members;         // structure, message, union
    std::vector<Enumerator> enumerators; // enumeration
    std::vector<Reservation> reserved;   // enumeration: values
    Span span;                           // documentation included
    bool sound = true;    // false once a fault in it is reported; its name is certain all the same
    bool readable = true; // false once a part was skipped, so that names in it may be missing

    bool has_body() const { return body.begin != body.end; }
};

struct Import {
    Name path; // without the quotes
    Span span;
};

// What the names of all types of the family begin with.
struct Prefix {
    Name name;
    Span span;
};

struct File {
    uint32_t file = 0;
    Doc doc;
    std::vector<Prefix> prefixes;
    std::vector<Reservation> reserved; // tags
    std::vector<Import> imports;
    bool imports_found = true;             // false once one is at fault, so that names may be unknown
    std::vector<Declaration> declarations; // those of arrays in place stand before their owner's
    std::vector<std::unique_ptr<const std::string>> made_names; // of arrays in place
    std::vector<Span> comments;
};

} // namespace tlvc::syntax
