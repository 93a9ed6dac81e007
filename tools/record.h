// A record of any type, with the blocks of its dynamic arrays; from and to bytes and JSON.
#pragma once

#include <tlvmsg/inspect.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tlvmsg::tool {

class Record {
public:
    // All zero.
    explicit Record(const tlvmsg_type *type);
    ~Record();
    Record(Record &&) = default;
    Record &operator=(Record &&) = delete;

    void *data() { return bytes_.get(); }
    const void *data() const { return bytes_.get(); }
    const tlvmsg_type *type() const { return type_; }

private:
    const tlvmsg_type *type_;
    std::unique_ptr<uint8_t[]> bytes_;
};

// Decodes a message into a record of zero bytes, and says how much of it was taken and what was tolerated.
bool decode(Record &record, std::span<const uint8_t> bytes, tlvmsg_extent &extent, tlvmsg_fault &fault);

// Spaces a level, or 0 for one line; `level` is how deep in another text it will stand.
std::string to_json(const tlvmsg_type *type, const void *record, unsigned indent, unsigned level = 0);

// Throws Failure(exit_malformed) that begins with the place.
Record from_json(const tlvmsg_type *type, std::string_view text);

} // namespace tlvmsg::tool
