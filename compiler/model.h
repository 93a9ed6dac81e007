// The resolved schema: what the emitters see. Built by resolve.cpp, vetted by the checks, then frozen.
//
// Everything is reached by pointer from one Schema, which owns it. Wire sizes are known here; offsets and
// sizes of records are not, because the target's own C compiler lays them out.
#pragma once

#include "source.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tlvc {

struct Family;
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

struct Member {
    // The scalar before a dynamic array is that array's count, and the enumeration before a union is that
    // union's selector: each is an element of its own on the wire, but lives in the record that follows it.
    enum class Role { Own, CountOfNext, SelectorOfNext };

    std::string name;
    const Type *type = nullptr;
    std::vector<std::string> doc;
    Role role = Role::Own;
    bool zero_count = false; // @zero_count: the decoder clears the count before it decodes the array
    Span span;
};

struct Alternative {
    std::vector<uint32_t> values;
    std::string name;
    const Type *type = nullptr;
    std::vector<std::string> doc;
    bool end_by_length = false; // @end_by_length: ends where its own length says, whatever its value holds
    Span span;
};

struct Type {
    Kind kind = Kind::Scalar;
    std::string name;
    std::vector<std::string> doc; // one entry a line, without the slashes
    const Family *family = nullptr;
    Span span;

    uint16_t tag = 0;              // enumeration, structure, scalar (the tag its encoder writes)
    std::vector<Member> members;   // structure, message
    const Type *element = nullptr; // element, packed and dynamic element arrays
    uint32_t capacity = 0;         // element, packed and byte arrays
    const Type *count = nullptr;   // every array: the scalar type of the record's count field

    const Type *selector = nullptr; // union: its enumeration ...
    std::string selector_name;      // ... and the name of that field
    // union: the structure that its operations take instead of a record of its own
    const Type *enclosing = nullptr;
    std::vector<Alternative> alternatives;

    // Encoded sizes, header included. Equal when the size does not depend on the record. max_size counts
    // every array at its capacity (dynamic ones at the most their count can say) and may exceed 65,535.
    uint64_t min_size = 0;
    uint64_t max_size = 0;
    bool fixed_size() const { return min_size == max_size; }
};

struct Family {
    std::string name;                 // the directory's
    std::vector<std::string> doc;     // the //! lines that open its first file
    std::vector<const Type *> types;  // in schema order, each after the types that its record holds
    std::vector<const Family *> uses; // families whose types it names, by name, itself left out
};

struct Schema {
    std::vector<std::unique_ptr<Type>> types;      // scalars first, then as declared
    std::vector<std::unique_ptr<Family>> families; // each after the families that it uses, otherwise by name
};

} // namespace tlvc
