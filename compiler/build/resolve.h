// Looks up every name and builds the model. What it builds is linked but not yet vetted.
#pragma once

#include "compiler/build/loader.h"
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

// Types with a fault, and those that name them, are not sound. The program must outlive the result.
Resolution resolve(const Program &program, Diagnostics &faults);

} // namespace tlvc
