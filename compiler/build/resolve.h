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

    // Of two places with the same claim, whether the first is the one to blame: it was written later, as far as the
    // files tell.
    bool is_newer(Span place, Span than) const;
};

// Types that something was reported of, and those that name them, are not sound. The program must live on.
Resolution resolve(const Program &program, Diagnostics &faults);

} // namespace tlvc
