// A record of any type, with the blocks of its dynamic arrays.
#pragma once

#include <tlvmsg/types.h>

#include <memory>

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

} // namespace tlvmsg::tool
