#include "schema_bench.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <random>
#include <string>

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

constexpr benchmark::IterationCount passes = 10; // in a repetition

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

// What is out of the caches when a pass begins.
enum class Cold { Everything, Data };

#ifdef __SSE2__
void flush(const void *at, size_t size) {
    const auto *bytes = static_cast<const uint8_t *>(at);
    for (size_t i = 0; i < size; i += 64) {
        __builtin_ia32_clflush(bytes + i);
    }
}

// Records and bytes leave the caches; the code that just ran stays.
void flush_data(const Corpus &corpus) {
    for (const Sample &each : corpus.samples()) {
        flush(each.record, each.type->size);
        flush(each.wire, each.wire_size);
        flush(each.out, each.wire_size);
        flush(each.decoded, each.type->size);
    }
}
#endif

template <class Operation>
struct ColdPass {
    const Corpus &corpus;
    Cold cold;
    Operation operation;
    bool allocates;

    // The seconds of one pass.
    double run(const std::vector<Step> &steps) const {
        using clock = std::chrono::steady_clock;
        const auto start = clock::now();
        for (const Step &step : steps) {
            operation(step);
        }
        const std::chrono::duration<double> time = clock::now() - start;
        for (const Sample &each : corpus.samples()) {
            if (allocates) {
                release(each);
            }
        }
        return time.count();
    }

    void prepare([[maybe_unused]] const std::vector<Step> &steps) const {
        if (cold == Cold::Everything) {
            empty_caches();
        }
#ifdef __SSE2__
        if (cold == Cold::Data) {
            run(steps);
            flush_data(corpus);
        }
#endif
    }

    void operator()(benchmark::State &state) const {
        std::vector<Step> steps = make_steps(corpus);
        std::minstd_rand random(1);
        for (auto _ : state) {
            std::shuffle(steps.begin(), steps.end(), random);
            prepare(steps);
            state.SetIterationTime(run(steps));
        }
        state.counters["wire"] = static_cast<double>(corpus.wire_bytes());
        state.counters["types"] = static_cast<double>(steps.size());
    }
};

void register_passes(const Corpus &corpus, const std::string &row, Cold cold) {
    const auto add = [&](const char *name, auto operation, bool allocates = false) {
        benchmark::RegisterBenchmark((row + name).c_str(),
                                     ColdPass<decltype(operation)>{corpus, cold, operation, allocates})
            ->Iterations(passes)
            ->UseManualTime();
    };
    const auto copy = [](const Step &step) {
        benchmark::DoNotOptimize(std::memcpy(step.out, step.wire, step.wire_size));
    };
    const auto encode = [](const Step &step) {
        benchmark::DoNotOptimize(step.codec.encode(step.record, step.out));
    };
    const auto decode = [](const Step &step) {
        benchmark::DoNotOptimize(step.codec.decode(step.wire, step.decoded));
    };
    const auto size = [](const Step &step) { benchmark::DoNotOptimize(step.codec.size(step.record)); };
    add("/encode/memcpy", copy);
    add("/encode/exact", encode);
    add("/decode/memcpy", copy);
    add("/decode/exact", decode, true);
    add("/size/exact", size);
}

} // namespace

void register_cold(const Corpus &corpus) {
    register_passes(corpus, "cold/every_type", Cold::Everything);
#ifdef __SSE2__
    register_passes(corpus, "cold/every_type_data", Cold::Data);
#endif
}

} // namespace tlvmsg_bench
