// How generated code spells things. Every emitter asks here, so that a type has one spelling everywhere.
#pragma once

#include "model.h"

#include <string>
#include <vector>

namespace tlvc {

// As an operation's parameter or a descriptor's record: "uint16_t", "zel_led_color", "ifid". A union without
// a record of its own answers with the structure that encloses it.
std::string record_name(const Type &type);

// As a field is declared. Records are spelled "struct ifid", so that a field may bear the name of its type,
// which C++ would otherwise refuse.
std::string field_type(const Type &type);

// As the codecs call it: "uint16", "character", "ifid".
std::string codec_name(const Type &type);

std::string size_operation(const Type &type);
std::string encode_operation(const Type &type);
std::string decode_operation(const Type &type);
std::string descriptor_name(const Type &type);

// Width in bytes of a scalar's value.
unsigned scalar_width(const Type &type);

bool is_array(const Type &type);
bool is_dynamic(const Type &type);

// Whether the members name fields of a record laid out member by member (as opposed to a number or an array).
bool has_members(const Type &type);

// The field that holds a member, as steps from the record: one, or two for what lives in the record behind
// it, or none for a union that shares the record of its owner.
std::vector<std::string> field_path(const Type &owner, size_t member);
std::string joined_path(const Type &owner, size_t member);

// The name of an array record's storage: "bytes" or "items".
std::string storage_name(const Type &array);

// Fields of a record in order, as declared: name and type, without what lives in the record of a neighbour.
// An empty name stands for the anonymous union of an enclosing record.
struct Field {
    std::string name;
    const Type *type = nullptr;
    const std::vector<std::string> *doc = nullptr;
};
std::vector<Field> fields(const Type &owner);

} // namespace tlvc
