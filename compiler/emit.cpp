// The list of emitters. A new one is a file of its own, a line here, and its spellings in names.cpp.
#include "emit.h"

#include <iterator>

namespace tlvc {

GeneratedFiles emit_headers(const Schema &schema); // include/tlvmsg/FAMILY.h, include/tlvmsg/all.h
GeneratedFiles emit_bounded(const Schema &schema); // include/tlvmsg/bounded/FAMILY.h, .../all.h
GeneratedFiles emit_traits(const Schema &schema);  // include/tlvmsg/FAMILY.hpp, include/tlvmsg/all.hpp
GeneratedFiles emit_codecs(const Schema &schema);  // src/FAMILY_codecs.h, src/FAMILY_codecs.cpp
GeneratedFiles emit_types(const Schema &schema);   // src/FAMILY_types.cpp, src/all_types.h, src/all_types.cpp
GeneratedFiles emit_layout(const Schema &schema);  // src/FAMILY_layout.c, src/FAMILY_layout.cpp
GeneratedFiles emit_exports(const Schema &schema); // src/tlvmsg.map, src/tlvmsg.symbols

GeneratedFiles emit(const Schema &schema) {
    GeneratedFiles files;
    for (auto *const emitter :
         {emit_headers, emit_bounded, emit_traits, emit_codecs, emit_types, emit_layout, emit_exports}) {
        GeneratedFiles more = emitter(schema);
        files.insert(files.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    }
    return files;
}

} // namespace tlvc
