#include "record.h"

#include <tlvmsg/inspect.h>

namespace tlvmsg::tool {

// What new gives is aligned for every standard type, and records are made of those.
Record::Record(const tlvmsg_type *type) : type_(type), bytes_(std::make_unique<uint8_t[]>(type->size)) {}

Record::~Record() {
    tlvmsg_release(type_, bytes_.get()); // null once moved from
}

} // namespace tlvmsg::tool
