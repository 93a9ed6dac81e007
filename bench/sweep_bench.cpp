#include "buffers.h"
#include "schema_bench.h"

#include <tlvmsg/inspect.h>
#include <tlvmsg/runtime.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace tlvmsg_bench {

namespace {

// How often an operation runs: for about a fifth of a millisecond at the pace of the slower codecs, where the clock no
// longer matters. For so many types, finding the number by trial would take longer than the measurement.
benchmark::IterationCount iterations(const Sample &sample) {
    return static_cast<benchmark::IterationCount>(200'000 / (5 + sample.wire_size / 2) + 1);
}

// Where a sample lies while it is measured: the same buffers for all of them.
class Workplace {
public:
    Sample take(const Sample &sample) {
        Sample here = sample;
        here.record = copied(record_, sample.record, sample.type->size);
        here.wire = copied(wire_, sample.wire, sample.wire_size);
        here.out = out_.data();
        here.decoded = copied(decoded_, sample.decoded, sample.type->size); // a union's has its selector
        return here;
    }

private:
    static constexpr size_t largest = size_t{1} << 18;

    static uint8_t *copied(const Buffer &to, const uint8_t *from, size_t size) {
        if (size > largest) {
            throw std::logic_error("a sample is larger than was foreseen");
        }
        return static_cast<uint8_t *>(std::memcpy(to.data(), from, size));
    }

    Buffer record_{largest, Buffer::For::Reading};
    Buffer wire_{largest, Buffer::For::Reading};
    Buffer out_{largest, Buffer::For::Writing};
    Buffer decoded_{largest, Buffer::For::Writing};
};

template <class Operation>
void add(const Sample &sample, const char *operation_and_subject, Operation operation) {
    const std::string name = std::string("sweep/") + sample.type->name + "/" + operation_and_subject;
    const auto wire_size = static_cast<double>(sample.wire_size);
    benchmark::RegisterBenchmark(name.c_str(), [&sample, operation, wire_size](benchmark::State &state) {
        static Workplace workplace;
        const Sample here = workplace.take(sample);
        for (int i = 0; i < 3; ++i) { // other types have used the caches since
            operation(here);
            benchmark::ClobberMemory();
        }
        for (auto _ : state) {
            operation(here);
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

// The bounded encoder need not send what the exact one sends of a dynamic byte array, so it writes to a buffer of its
// own, and its bytes are not compared.
void add_bounded(const Sample &sample) {
    const tlvmsg_type *type = sample.type;
    add(sample, "size/exact",
        [](const Sample &here) { benchmark::DoNotOptimize(here.codec.size(here.record)); });
    add(sample, "size/bounded", [type](const Sample &here) {
        size_t size;
        benchmark::DoNotOptimize(tlvmsg_size(type, here.record, &size, nullptr));
    });
    add(sample, "encode/bounded", [type](const Sample &here) {
        size_t size;
        benchmark::DoNotOptimize(tlvmsg_encode(type, here.record, here.out, here.wire_size, &size, nullptr));
    });
    add(sample, "verify/bounded", [type](const Sample &here) {
        benchmark::DoNotOptimize(tlvmsg_verify(type, here.wire, here.wire_size, nullptr, nullptr, nullptr));
    });
    add(sample, "decode/bounded", [type](const Sample &here) {
        benchmark::DoNotOptimize(
            tlvmsg_decode(type, here.wire, here.wire_size, nullptr, here.decoded, nullptr, nullptr));
        release(here);
    });
}

void decode(const Sample &sample) {
    benchmark::DoNotOptimize(sample.codec.decode(sample.wire, sample.decoded));
}

} // namespace

void register_sweep(const Corpus &corpus) {
    for (const Sample &sample : corpus.samples()) {
        add(sample, "encode/memcpy", [](const Sample &here) { copy(here); });
        add(sample, "encode/exact", [](const Sample &here) { encode(here); });
        if (sample.blocks.empty()) {
            add(sample, "decode/memcpy", [](const Sample &here) { copy(here); });
            add(sample, "decode/exact", [](const Sample &here) { decode(here); });
        } else {
            add(sample, "decode/memcpy", [](const Sample &here) { allocate_and_copy(here); });
            add(sample, "decode/exact", [](const Sample &here) {
                decode(here);
                release(here);
            });
        }
        if (sample.type->kind != TLVMSG_UNION) { // a union's selector stands before it
            add_bounded(sample);
        }
    }
}

} // namespace tlvmsg_bench
