// What the libraries export of types: tlvmsg.symbols, sorted, and types.symbols, the descriptors.
#include "compiler/emit/emit.h"
#include "compiler/model/names.h"

#include <algorithm>

namespace tlvc {

namespace {

const char *const runtime_operations[] = {
    "tlv_calloc",     "tlv_decode_buffer", "tlv_encode_buffer", "tlv_encode_type_len",
    "tlv_free",       "tlv_malloc",        "tlv_read_16bit",    "tlv_read_32bit",
    "tlv_read_64bit", "tlv_write_16bit",   "tlv_write_32bit",   "tlv_write_64bit",
};

std::vector<std::string> exported_names(const Schema &schema) {
    std::vector<std::string> exported(std::begin(runtime_operations), std::end(runtime_operations));
    for (const Type &type : schema.types) {
        exported.push_back(names::size_operation(type));
        exported.push_back(names::encode_operation(type));
        exported.push_back(names::decode_operation(type));
    }
    std::sort(exported.begin(), exported.end());
    return exported;
}

} // namespace

GeneratedFiles emit_exports(const Schema &schema) {
    std::string symbols;
    for (const std::string &name : exported_names(schema)) {
        symbols += name + "\n";
    }
    std::string descriptors;
    for (const Type &type : schema.types) {
        descriptors += names::descriptor(type) + "\n";
    }
    return {{"src/tlvmsg.symbols", symbols}, {"src/types.symbols", descriptors}};
}

} // namespace tlvc
