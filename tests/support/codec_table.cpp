#include "codec_table.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace tlvmsg_test {

namespace {

template <class Operation>
void find(Operation &operation, void *library, const std::string &name) {
    void *address = dlsym(library == nullptr ? RTLD_DEFAULT : library, name.c_str());
    if (address == nullptr) {
        throw std::runtime_error(name + " is not exported");
    }
    operation = reinterpret_cast<Operation>(address);
}

} // namespace

Codec find_codec(const tlvmsg_type &type, void *library) {
    const std::string name = type.name;
    Codec codec{};
    find(codec.size, library, (type.kind == TLVMSG_SCALAR ? "get_" : "get_tlv_") + name + "_size");
    find(codec.encode, library, "encode_tlv_" + name);
    find(codec.decode, library, "decode_tlv_" + name);
    return codec;
}

} // namespace tlvmsg_test
