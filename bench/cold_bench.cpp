#include "schema_bench.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <random>

namespace tlvmsg_bench {

namespace {

// Reads and writes more than the caches hold, and so leaves nothing else in them: neither data nor code nor
// the page table's entries. (What the system says of the last cache is the host's in a virtual machine, so
// the size is fixed; the second-level cache it clears in any case.)
void empty_caches() {
    static std::vector<uint8_t> sweep(64 << 20);
    for (size_t at = 0; at < sweep.size(); at += 64) {
        ++sweep[at];
    }
    benchmark::ClobberMemory();
}

constexpr benchmark::IterationCount passes = 10; // a repetition

// What one step of a pass needs and nothing more, one behind the other in the pass's order.
struct Step {
    tlvmsg_test::Codec codec;
    const uint8_t *record;
    const uint8_t *wire;
    size_t wire_size;
    uint8_t *out;
    uint8_t *decoded;
};

std::vector<Step> make_steps(const Corpus &corpus) {
    std::vector<Step> steps;
    for (const Sample &each : corpus.samples()) {
        steps.push_back({each.codec, each.record, each.wire, each.wire_size, each.out, each.decoded});
    }
    return steps;
}

template <class Operation, class Finish>
void run_cold(benchmark::State &state, const Corpus &corpus, Operation operation, Finish finish) {
    using clock = std::chrono::steady_clock;
    std::vector<Step> steps = make_steps(corpus);
    std::minstd_rand random(1);
    for (auto _ : state) {
        std::shuffle(steps.begin(), steps.end(), random);
        empty_caches();
        const auto start = clock::now();
        for (const Step &step : steps) {
            operation(step);
        }
        state.SetIterationTime(std::chrono::duration<double>(clock::now() - start).count());
        finish();
    }
    state.counters["wire"] = static_cast<double>(corpus.wire_bytes());
    state.counters["types"] = static_cast<double>(steps.size());
}

template <class Operation, class Finish>
void add(const char *name, const Corpus &corpus, Operation operation, Finish finish) {
    benchmark::RegisterBenchmark(
        name,
        [&corpus, operation, finish](benchmark::State &state) { run_cold(state, corpus, operation, finish); })
        ->Iterations(passes)
        ->UseManualTime();
}

void copy(const Step &step) { benchmark::DoNotOptimize(std::memcpy(step.out, step.wire, step.wire_size)); }

void encode(const Step &step) { benchmark::DoNotOptimize(step.codec.encode(step.record, step.out)); }

void decode(const Step &step) { benchmark::DoNotOptimize(step.codec.decode(step.wire, step.decoded)); }

} // namespace

void register_cold(const Corpus &corpus) {
    const auto nothing = [] {};
    const auto release_all = [&corpus] {
        for (const Sample &each : corpus.samples()) {
            release(each);
        }
    };
    add(
        "cold/every_type/encode/memcpy", corpus, [](const Step &step) { copy(step); }, nothing);
    add(
        "cold/every_type/encode/exact", corpus, [](const Step &step) { encode(step); }, nothing);
    add(
        "cold/every_type/decode/memcpy", corpus, [](const Step &step) { copy(step); }, nothing);
    add(
        "cold/every_type/decode/exact", corpus, [](const Step &step) { decode(step); }, release_all);
}

} // namespace tlvmsg_bench
