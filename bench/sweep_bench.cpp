#include "schema_bench.h"

#include <tlvmsg/runtime.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace tlvmsg_bench {

namespace {

// Counted beforehand, since finding out how many fill a time takes longer than the measurement for so many
// types: about a fifth of a millisecond at the pace of the slower codecs, where the clock no longer matters.
benchmark::IterationCount iterations(const Sample &sample) {
    return static_cast<benchmark::IterationCount>(200'000 / (5 + sample.wire_size / 2) + 1);
}

template <class Operation>
void add(const Sample &sample, const char *operation_and_subject, Operation operation) {
    const std::string name = std::string("sweep/") + sample.type->name + "/" + operation_and_subject;
    const auto wire_size = static_cast<double>(sample.wire_size);
    benchmark::RegisterBenchmark(name.c_str(), [operation, wire_size](benchmark::State &state) {
        for (int i = 0; i < 3; ++i) { // other types have used the caches since
            operation();
            benchmark::ClobberMemory();
        }
        for (auto _ : state) {
            operation();
            benchmark::ClobberMemory();
        }
        state.counters["wire"] = wire_size;
    })->Iterations(iterations(sample));
}

void copy(const Sample &sample) {
    benchmark::DoNotOptimize(std::memcpy(sample.out, sample.wire, sample.wire_size));
}

// A copy with the allocations that decoding takes, one after the other.
void allocate_and_copy(const Sample &sample) {
    for (const Block &block : sample.blocks) {
        void *memory = std::malloc(block.size);
        benchmark::DoNotOptimize(memory);
        std::free(memory);
    }
    copy(sample);
}

void encode(const Sample &sample) {
    benchmark::DoNotOptimize(sample.codec.encode(sample.record, sample.out));
}

void decode(const Sample &sample) {
    benchmark::DoNotOptimize(sample.codec.decode(sample.wire, sample.decoded));
}

} // namespace

void register_sweep(const Corpus &corpus) {
    for (const Sample &sample : corpus.samples()) {
        add(sample, "encode/memcpy", [&sample] { copy(sample); });
        add(sample, "encode/exact", [&sample] { encode(sample); });
        if (sample.blocks.empty()) {
            add(sample, "decode/memcpy", [&sample] { copy(sample); });
            add(sample, "decode/exact", [&sample] { decode(sample); });
        } else {
            add(sample, "decode/memcpy", [&sample] { allocate_and_copy(sample); });
            add(sample, "decode/exact", [&sample] {
                decode(sample);
                release(sample);
            });
        }
    }
}

} // namespace tlvmsg_bench
