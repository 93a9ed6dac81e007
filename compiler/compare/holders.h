// Which types hold a type, the other way round than the model has it.
#pragma once

#include "compiler/model/model.h"

#include <map>
#include <set>

namespace tlvc {

// A place where a type stands.
struct Holder {
    const Type *type;
    size_t member; // of a structure or message; 0 of an array or union
};

class Holders {
public:
    explicit Holders(const Schema &schema);

    // The places in the order of the schema.
    const std::vector<Holder> &of(const Type &type) const;

private:
    std::map<const Type *, std::vector<Holder>> holders_;
};

// The messages of a schema and all that they hold, directly or through others.
std::set<const Type *> types_in_messages(const Schema &schema);

} // namespace tlvc
