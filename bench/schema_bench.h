// Benchmarks over the whole schema.
#pragma once

#include "corpus.h"

namespace tlvmsg_bench {

// Every type once in random order, with nothing of it in the caches: "cold/every_type/OPERATION/SUBJECT", one
// pass an iteration. The corpus must outlive the benchmarks.
void register_cold(const Corpus &corpus);

// Each type on its own, caches hot: "sweep/TYPE/OPERATION/SUBJECT".
void register_sweep(const Corpus &corpus);

} // namespace tlvmsg_bench
