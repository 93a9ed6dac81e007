// How generated code spells things, and only that. Every emitter asks here, so that a name has one spelling
// everywhere, and what collides is known before anything is written.
#pragma once

#include "compiler/model/model.h"

namespace tlvc::names {

// The record in an operation's parameter or a descriptor: "uint16_t", "zel_led_color", "ifid". For a union without a
// record of its own it is the structure that encloses it. A few types have another name in C than in the schema.
std::string record(const Type &type);

// The type in a field's declaration. Records are spelled "struct ifid", so that a field may bear the name of its type,
// which C++ would otherwise refuse.
std::string field_type(const Type &type);

// The name in the codecs: "uint16", "tlv_char", "ifid".
std::string codec(const Type &type);

std::string size_operation(const Type &type);
std::string encode_operation(const Type &type);
std::string decode_operation(const Type &type);

// Macros: TLVMSG_TAG_x, TLVMSG_SIZE_x, ...
enum class Constant { Tag, Size, MinSize, MaxSize, Capacity, Fingerprint, Key };
std::string_view word(Constant what); // "TAG"
std::string constant(Constant what, const Type &type);
std::vector<Constant> constants(const Type &type); // that its header has
std::string enumerator(const Type &enumeration, const Enumerator &enumerator);
std::string choice(const Type &union_type, const Alternative &alternative);

// The function that makes it what a union holds. Unique as the macro above is.
std::string chooser(const Type &union_type, const Alternative &alternative);

// FAMILY.h, bounded/FAMILY.h, FAMILY.hpp.
enum class Header { Records, Bounded, Traits };
std::string guard(Header form, const std::string &name); // of a family's header, or of that of all

// The descriptor of a type, its kind, and the tables that it refers to.
const char *kind(Kind kind);
std::string descriptor(const Type &type);
std::string operations(const Type &type);
std::string members_table(const Type &type);
std::string alternatives_table(const Type &type);
std::string enumerators_table(const Type &type);
std::string values_table(const Type &type, const Alternative &alternative);

// Lines of the headers in bounded/: what they declare is spelled in include/tlvmsg/typed.h.
std::string descriptor_accessor(const Type &type);
std::string declared_descriptor(const Type &type);
std::string typed_operations(const Type &type); // the descriptor included
std::string declared_chooser(const Type &union_type, const Alternative &alternative);

// The union of a record's alternatives, which has no name there, where assertions need one.
std::string alternatives_union(const Type &type);

} // namespace tlvc::names
