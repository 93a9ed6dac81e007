// Prints the names that libtlvmsg has to export, as the descriptors have it: three a type, and the runtime.
#include <tlvmsg/types.h>

#include <cstdio>

int main() {
    static const char *const runtime[] = {"malloc",      "calloc",        "free",          "read_16bit",
                                          "read_32bit",  "read_64bit",    "write_16bit",   "write_32bit",
                                          "write_64bit", "encode_buffer", "decode_buffer", "encode_type_len"};
    for (const char *name : runtime) {
        std::printf("tlv_%s\n", name);
    }
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        std::printf("get_%s%s_size\n", type.kind == TLVMSG_SCALAR ? "" : "tlv_", type.name);
        std::printf("encode_tlv_%s\ndecode_tlv_%s\n", type.name, type.name);
    }
}
