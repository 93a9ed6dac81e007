// What types are and hold.
#pragma once

#include <tlvmsg/types.h>

#include <functional>

namespace tlvmsg_test {

bool is_array(const tlvmsg_type &type);
bool is_dynamic(const tlvmsg_type &type);

// Calls `visit` for the type and everything that its records may hold.
void for_each_type(const tlvmsg_type &type, const std::function<void(const tlvmsg_type &)> &visit);

// Whether one of these types is such a one.
bool holds(const tlvmsg_type &type, bool (*is_such)(const tlvmsg_type &));

// What checks have to except: pointers, an exact encoder that sends them, a decoder that goes by what the
// record holds, and one that refuses what its encoder writes.
bool is_dynamic_bytes(const tlvmsg_type &type);
bool is_union(const tlvmsg_type &type);
bool is_char(const tlvmsg_type &type);

} // namespace tlvmsg_test
