#include "record.h"

namespace tlvmsg::tool {

// What new gives is aligned for every standard type, and records are made of those.
Record::Record(const tlvmsg_type *type) : type_(type), bytes_(std::make_unique<uint8_t[]>(type->size)) {}

Record::~Record() {
    tlvmsg_release(type_, bytes_.get()); // null once moved from
}

bool decode(Record &record, std::span<const uint8_t> bytes, tlvmsg_extent &extent, tlvmsg_fault &fault) {
    return tlvmsg_verify(record.type(), bytes.data(), bytes.size(), nullptr, &extent, &fault) &&
           tlvmsg_decode(record.type(), bytes.data(), bytes.size(), nullptr, record.data(), nullptr, &fault);
}

} // namespace tlvmsg::tool
