// The library of forms in C++: what it hands out releases itself, and its faults are thrown.
#pragma once

#include "forms/record/record.h"

#include <tlvmsg/forms.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::tool {

// What the library hands out, with how many there are.
template <class Item>
class List {
public:
    List(Item *items, size_t count) : items_(items, tlvmsg_free), count_(count) {}

    size_t size() const { return count_; }
    const Item *begin() const { return items_.get(); }
    const Item *end() const { return items_.get() + count_; }
    const Item &operator[](size_t index) const { return items_[index]; }

private:
    std::unique_ptr<Item[], void (*)(void *)> items_;
    size_t count_;
};

using forms::Record;

// "yes", "part", "no".
const char *fit_name(tlvmsg_fit fit);

// Decodes a message into a record of zero bytes, unless it does not fit.
bool decode(Record &record, std::span<const uint8_t> bytes, tlvmsg_verdict &verdict);

// The best first; `most` of those that do not take all bytes, also from further in.
List<tlvmsg_guess> guess(std::span<const uint8_t> bytes, size_t most);

// The messages that fill the bytes; none where others do as well.
List<tlvmsg_part> divide(std::span<const uint8_t> bytes);

// What can be read of a broken message.
std::string partial_json(const tlvmsg_type *type, std::span<const uint8_t> bytes, unsigned indent);

// Spaces a level, or 0 for one line; `level` is how deep in another text it will stand.
std::string to_json(const tlvmsg_type *type, const void *record, unsigned indent, unsigned level = 0);

// Throws Failure(exit_malformed) that begins with the place.
Record from_json(const tlvmsg_type *type, std::string_view text);

// To standard output. Without a type they give how many bytes whole elements take.
void print_text(const tlvmsg_type *type, const void *record);
size_t print_untyped_json(std::span<const uint8_t> bytes, unsigned indent);
size_t print_untyped_text(std::span<const uint8_t> bytes);

// By tags when the type is null.
tlvmsg_verdict print_annotated(const tlvmsg_type *type, std::span<const uint8_t> bytes);

List<tlvmsg_difference> diff(const tlvmsg_type *type, const void *a, const void *b);

// Throws Failure(exit_usage) for a setting that makes no sense.
Record make_sample(const tlvmsg_type *type, tlvmsg_sample_kind kind, uint64_t seed,
                   const std::vector<std::string> &settings = {});

// At least one message. Throws Failure(exit_malformed) that begins with the line's number.
List<tlvmsg_hex_message> read_hex(std::string_view text);

} // namespace tlvmsg::tool
