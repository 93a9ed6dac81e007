// How many items an array has room for.
#pragma once

#include "compiler/model/model.h"

namespace tlvc {

// As many as its record can hold.
uint64_t countable(const Type &array);

// Whether its items are no elements of their own.
bool has_bare_items(const Type &array);

// The most when its element takes up to `size` bytes.
uint64_t most_items(const Type &array, uint64_t size);

} // namespace tlvc
