// A record of any type, with the blocks of its dynamic arrays.
#pragma once

#include <tlvmsg/inspect.h>

#include <cstdint>
#include <memory>

namespace tlvmsg::forms {

class Record {
public:
    // All zero. What new gives is aligned for every standard type, and records are made of those.
    explicit Record(const tlvmsg_type *type) : type_(type), bytes_(std::make_unique<uint8_t[]>(type->size)) {}
    ~Record() { tlvmsg_release(type_, bytes_.get()); } // null once moved from
    Record(Record &&) = default;
    Record &operator=(Record &&) = delete;

    void *data() { return bytes_.get(); }
    const void *data() const { return bytes_.get(); }
    const tlvmsg_type *type() const { return type_; }

private:
    const tlvmsg_type *type_;
    std::unique_ptr<uint8_t[]> bytes_;
};

} // namespace tlvmsg::forms
