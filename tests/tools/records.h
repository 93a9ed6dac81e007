// Records and their encodings, as these tests pass them around.
#pragma once

#include "tools/record.h"

#include <tlvmsg/inspect.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tlvmsg::tool {

using Bytes = std::vector<uint8_t>;

inline const tlvmsg_type *type_named(const char *name) {
    const tlvmsg_type *type = tlvmsg_type_find(name);
    if (type == nullptr) {
        throw std::runtime_error(std::string("no type ") + name);
    }
    return type;
}

// Nothing when the encoder refuses the record.
inline std::optional<Bytes> encoded(const Record &record) {
    size_t size = 0;
    if (!tlvmsg_size(record.type(), record.data(), &size, nullptr)) {
        return std::nullopt;
    }
    Bytes bytes(size);
    size_t written = 0;
    if (!tlvmsg_encode(record.type(), record.data(), bytes.data(), bytes.size(), &written, nullptr) ||
        written != size) {
        return std::nullopt;
    }
    return bytes;
}

inline std::optional<Record> decoded(const tlvmsg_type *type, const Bytes &bytes) {
    Record record(type);
    if (!tlvmsg_decode(type, bytes.data(), bytes.size(), nullptr, record.data(), nullptr, nullptr)) {
        return std::nullopt;
    }
    return record;
}

template <class Visit>
void for_each_type(const Visit &visit) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        visit(tlvmsg_type_at(i));
    }
}

} // namespace tlvmsg::tool
