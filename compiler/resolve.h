// Looks up every name and builds the model. What it builds is linked but not yet vetted.
#pragma once

#include "loader.h"
#include "model.h"

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
};

// The model can be used only if nothing was reported.
Resolution resolve(const Program &program, Diagnostics &faults);

} // namespace tlvc
