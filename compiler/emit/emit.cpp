// The list of emitters. A new one is a file of its own, a line here, its spellings in names.cpp, and its outputs in
// cmake/tlvmsg-generated.cmake.
#include "compiler/emit/emit.h"

#include <algorithm>
#include <iterator>

namespace tlvc {

GeneratedFiles emit_header(const Family &family, Product product);  // include/tlvmsg/FAMILY.h
GeneratedFiles emit_bounded(const Family &family, Product product); // include/tlvmsg/bounded/FAMILY.h
GeneratedFiles emit_traits(const Family &family, Product product);  // include/tlvmsg/FAMILY.hpp
GeneratedFiles emit_codecs(const Family &family,
                           Product product); // src/FAMILY_{codecs.h,codecs.cpp,bounded.cpp}
GeneratedFiles emit_types(const Family &family, Product product); // src/FAMILY_types.cpp
GeneratedFiles emit_layout(const Family &family,
                           Product product); // src/FAMILY_layout.c, src/FAMILY_layout.cpp

GeneratedFiles emit_umbrellas(const Schema &schema); // include/tlvmsg/{all.h,bounded/all.h,all.hpp}
GeneratedFiles emit_scalars(const Schema &schema);   // src/all_bounded.cpp
GeneratedFiles emit_index(const Schema &schema);     // src/all_types.cpp, src/all_index.cpp
GeneratedFiles emit_exports(const Schema &schema);   // src/tlvmsg.symbols, src/types.symbols
GeneratedFiles emit_described(const Schema &schema); // share/tlvmsg/schema.json

GeneratedFiles emit(const Schema &schema, Product product) {
    GeneratedFiles files;
    const auto add = [&](GeneratedFiles more) {
        files.insert(files.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    };
    for (const Family *family : schema.in_order) {
        for (auto *const emitter :
             {emit_header, emit_bounded, emit_traits, emit_codecs, emit_types, emit_layout}) {
            if (product == Product::Library || std::ranges::any_of(family->sections, &Section::named)) {
                add(emitter(*family, product));
            }
        }
    }
    for (auto *const emitter : {emit_umbrellas, emit_scalars, emit_index, emit_exports, emit_described}) {
        if (product == Product::Library) {
            add(emitter(schema));
        }
    }
    return files;
}

} // namespace tlvc
