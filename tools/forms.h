// The library of forms as the commands need it: what goes wrong is thrown, and texts go to standard output.
#pragma once

#include <tlvmsg/tlvmsg_forms.hpp>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::tool {

// "yes", "part", "no".
const char *fit_name(tlvmsg_fit fit);

// Decodes a message, unless it does not fit: the record is empty then.
any_record decode(const tlvmsg_type *type, std::span<const uint8_t> bytes, tlvmsg_verdict &verdict);

// The best first; `most` of those that do not take all bytes, also from further in.
list<tlvmsg_guess> guess(std::span<const uint8_t> bytes, size_t most);

// The messages that fill the bytes; none where others do as well.
list<tlvmsg_part> divide(std::span<const uint8_t> bytes);

// What can be read of a broken message.
std::string partial_json(const tlvmsg_type *type, std::span<const uint8_t> bytes, unsigned indent);

// Spaces a level, or 0 for one line; `level` is how deep in another text it will stand.
std::string to_json(const any_record &record, unsigned indent, unsigned level = 0);

// The type, or an array of the types by name.
std::string type_json(const tlvmsg_type *type);
std::string types_json(const std::vector<const tlvmsg_type *> &types);

// Throws Failure(exit_malformed) that begins with the place.
any_record from_json(const tlvmsg_type *type, std::string_view text);

// To standard output. Without a type they give how many bytes whole elements take.
void print_text(const any_record &record);
size_t print_untyped_json(std::span<const uint8_t> bytes, unsigned indent, std::string_view behind = "\n");
size_t print_untyped_text(std::span<const uint8_t> bytes);

// By tags when the type is null.
tlvmsg_verdict print_annotated(const tlvmsg_type *type, std::span<const uint8_t> bytes);

list<tlvmsg_difference> differences(const any_record &a, const any_record &b);

// Throws Failure(exit_usage) for a setting that makes no sense.
any_record make_sample(const tlvmsg_type *type, tlvmsg_sample_kind kind, uint64_t seed,
                       const std::vector<std::string> &settings = {});

// At least one message, and lines without. Throws Failure(exit_malformed) that begins with the line's number.
list<tlvmsg_hex_message> find_hex(std::string_view text, const tlvmsg_type *type, bool holes);

} // namespace tlvmsg::tool
