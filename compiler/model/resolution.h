// The model beside the syntax that it was made of, which is what checks blame.
#pragma once

#include "compiler/language/program.h"
#include "compiler/model/model.h"

#include <memory>

namespace tlvc {

// A declaration and what it has become. Their members and alternatives correspond one to one.
struct Declared {
    const syntax::Declaration *syntax;
    Type *type;
};

struct Resolution {
    std::unique_ptr<Schema> schema;
    std::vector<Declared> declared; // by family, then by file, then as written
    const Program &program;

    // Says which of two places with the same claim is to blame: true if the first was written later, as far as the
    // files show.
    bool is_newer(Span place, Span than) const;
};

} // namespace tlvc
