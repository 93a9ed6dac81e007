// The resolved schema: what the emitters see. Built by the phases from resolve to order, vetted by the
// checks, then frozen: behind a const Schema everything is const.
//
// Wire sizes are known here; offsets and sizes of records are not, because the target's own C compiler lays
// them out.
#pragma once

#include "compiler/model/reserved_numbers.h"
#include "compiler/model/wire_format.h"
#include "compiler/text/source.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace tlvc {

struct Attribute;
struct Family;
struct Section;
struct Type;

enum class Kind {
    Scalar,          // uint8, char, ...: predefined
    Enumeration,     // a tagged uint32
    Structure,       // a tagged sequence of members
    Message,         // an untagged sequence of members
    ElementArray,    // count and capacity whole elements, in the record
    PackedArray,     // count and capacity bare 16-, 32- or 64-bit integers, in the record
    ByteArray,       // count and capacity bytes, in the record
    DynamicElements, // count and a pointer to elements
    DynamicBytes,    // count and a pointer to bytes
    Union,           // one of several alternatives, chosen by a selector
};

// How many there are, by which tables are measured. Compilers tell of one that is missing here.
inline constexpr size_t kinds = [] {
    size_t count = 0;
    const auto is_kind = [](Kind kind) {
        switch (kind) {
        case Kind::Scalar:
        case Kind::Enumeration:
        case Kind::Structure:
        case Kind::Message:
        case Kind::ElementArray:
        case Kind::PackedArray:
        case Kind::ByteArray:
        case Kind::DynamicElements:
        case Kind::DynamicBytes:
        case Kind::Union:
            return true;
        }
        return false;
    };
    while (is_kind(static_cast<Kind>(count))) {
        ++count;
    }
    return count;
}();

using Doc = std::vector<std::string>; // one entry a line, without the slashes

using Attributes = std::vector<const Attribute *>; // in the order of their table

struct Enumerator {
    std::string name;
    uint32_t value = 0;
    Doc doc;
    Span span;
};

struct Member {
    // The scalar before a dynamic array is that array's count, and the enumeration before a union is that
    // union's selector: each is an element of its own on the wire, but lives in the record that follows it.
    enum class Role { Own, CountOfNext, SelectorOfNext };

    std::string name;
    const Type *type = nullptr;
    Doc doc;
    Role role = Role::Own;
    Attributes attributes = {};
    Span span;

    // Where the record holds it, as steps from field to field: one; two for what lives in the record of the
    // member behind it; none for a union that shares the record of its owner.
    std::vector<std::string> path;
    bool lives_in_next() const { return path.size() > 1; }
};

struct Alternative {
    std::vector<uint32_t> values;
    std::string name;
    const Type *type = nullptr;
    Doc doc;
    Attributes attributes = {};
    Span span;
};

// A field of a record, in the order in which C declares them.
struct Field {
    enum class Storage {
        Plain,
        Array,        // of the owner's capacity
        Pointer,      // to as many as the count says
        Alternatives, // of a union, in the same place; the field itself has no name
    };
    Storage storage = Storage::Plain;
    std::string name;
    const Type *type = nullptr; // of the field, of an item, or the union
    Doc doc;
    Doc shared_doc; // of the count or selector in it that is a member of its own
    Span span;
};

struct Type {
    Kind kind = Kind::Scalar;
    std::string name;
    Doc doc;
    const Family *family = nullptr;   // null for scalars
    const Section *section = nullptr; // null for scalars
    Span span;
    bool sound = true; // else a fault is reported, in it or in what it names, and only the name is certain

    const wire::Scalar *scalar = nullptr; // scalars
    uint16_t tag = 0;                    // enumeration, structure, scalar (the tag its encoder writes), array
    std::vector<Enumerator> enumerators; // enumeration: the values that have names
    std::vector<Reserved> reserved;      // enumeration: values that must not get one again, in order
    std::vector<Member> members;         // structure, message
    std::optional<uint32_t> key;         // message: by which receivers know it, if any
    const Type *element = nullptr;       // every array: of an item, uint8 for bytes
    uint32_t capacity = 0;               // element, packed and byte arrays
    const Type *count = nullptr;         // every array: the scalar type of the record's count field
    bool in_place = false;               // an array: declared by a member, whose documentation has to do

    const Type *selector = nullptr; // union: its enumeration ...
    std::string selector_name;      // ... and the name of that field
    // union: the structure that its operations take instead of a record of its own
    const Type *enclosing = nullptr;
    std::vector<Alternative> alternatives;

    // The fields of its record, in order. Empty when the record is a plain number or another type's.
    std::vector<Field> fields;

    // Encoded sizes, header included: no encoding is smaller or larger. Equal when the size does not depend
    // on the record.
    uint64_t min_size = 0;
    uint64_t max_size = 0;
    bool fixed_size() const { return min_size == max_size; }
    bool wraps = false;               // whether records can be filled so that their 16-bit size wraps
    bool holds_blocks = false;        // whether a record can have a dynamic array in it ...
    bool holds_dynamic_bytes = false; // ... and one of bytes
    uint64_t max_count = 0;           // every array: the most items that an element of it can hold

    uint64_t fingerprint = 0; // of what lies on the wire, names and docs left out (fingerprint.h)
};

// The part of a family that one schema file declares.
struct Section {
    Doc doc;              // the //! lines that open it
    bool named = false;   // by the user, not only by another file's import
    bool shipped = false; // with the library
    uint32_t file = 0;    // in the Sources
    std::vector<const Type *> types;
};

struct Family {
    std::string name;                      // the directory's
    Doc doc;                               // the //! lines of its family.tlv
    std::vector<Reserved> reserved;        // tags that no type may have again, in order
    std::vector<const Section *> sections; // by file name
    std::vector<const Type *> types;       // section by section, each after the types that its record holds
    std::vector<const Family *> uses;      // families whose types it names, by name, itself left out
};

struct Schema {
    std::deque<Type> types; // scalars first, then as declared
    std::deque<Section> sections;
    std::deque<Family> families;          // by name
    std::vector<const Family *> in_order; // each after the families that it uses, otherwise by name
};

inline bool is_number(const Type &type) {
    return type.kind == Kind::Scalar || type.kind == Kind::Enumeration;
}
inline bool is_signed(const Type &type) {
    return type.scalar != nullptr && type.scalar->sign == wire::Sign::Signed;
}
inline bool is_array(const Type &type) { return type.count != nullptr; }
inline bool is_dynamic(const Type &type) {
    return type.kind == Kind::DynamicElements || type.kind == Kind::DynamicBytes;
}
inline bool holds_bytes(const Type &type) {
    return type.kind == Kind::ByteArray || type.kind == Kind::DynamicBytes;
}
inline bool has_members(const Type &type) {
    return type.kind == Kind::Structure || type.kind == Kind::Message;
}
// A structure in C. Enumerations are numbers, and a union may share the record of its owner.
inline bool has_own_record(const Type &type) { return !is_number(type) && type.enclosing == nullptr; }
inline bool has_tag(const Type &type) {
    return type.kind == Kind::Structure || type.kind == Kind::Enumeration;
}

std::string_view in_words(const Type &type); // "a structure"

// As faults and descriptors spell a path: "vlan_counters.count".
std::string joined(const std::vector<std::string> &path);

} // namespace tlvc
