#include "compiler/language/imports.h"

#include <fmt/format.h>

namespace tlvc {

Correction added_import(const syntax::File &file, std::string_view path) {
    const auto at = [&](uint32_t offset) { return Span{file.file, offset, offset}; };
    if (!file.imports.empty()) {
        return {at(file.imports.front().span.begin), fmt::format("import \"{}\"\n", path)};
    }
    return file.doc.lines.empty() ? Correction{at(0), fmt::format("import \"{}\"\n\n", path)}
                                  : Correction{at(file.doc.span.end), fmt::format("\n\nimport \"{}\"", path)};
}

} // namespace tlvc
