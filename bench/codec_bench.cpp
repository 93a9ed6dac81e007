// The benchmark program: the rows ("row/ROW/OPERATION/SUBJECT", caches hot), every type cold, every type on
// its own, and the peers where they are built in. `report` runs it and makes a table of its figures.
#include "operations.h"
#include "schema_bench.h"

#include <benchmark/benchmark.h>

#include <dlfcn.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <string>

#ifdef TLVMSG_BENCH_PEERS
#include "peers/peers.h"
#endif

namespace tlvmsg_bench {

namespace {

template <class AnyRow>
void register_row(const AnyRow &row) {
    static const RowBuffers<AnyRow> buffers(row);
    for_each_operation(row, buffers, [&row](const char *operation, const char *subject, auto run) {
        const std::string name = std::string("row/") + row.name + "/" + operation + "/" + subject;
        benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State &state) {
            for (auto _ : state) {
                run();
            }
            state.counters["wire"] = static_cast<double>(buffers.wire_size());
        });
    });
}

// Which build of the library is measured: the loader may have found another than the one linked against.
std::string loaded_library() {
    Dl_info info{};
    void *operation = dlsym(RTLD_DEFAULT, "encode_tlv_uint32");
    return operation != nullptr && dladdr(operation, &info) != 0 ? info.dli_fname : "unknown";
}

void describe_build() {
    benchmark::AddCustomContext("compiler", TLVMSG_BENCH_COMPILER);
    benchmark::AddCustomContext("flags", TLVMSG_BENCH_FLAGS);
    benchmark::AddCustomContext("library", loaded_library());
}

void register_all() {
    for_each_row([](const auto &row) { register_row(row); });
#ifdef TLVMSG_BENCH_PEERS
    register_peers();
#endif
    static const Corpus corpus;
    register_cold(corpus);
    register_sweep(corpus);
}

} // namespace

} // namespace tlvmsg_bench

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    try {
        tlvmsg_bench::describe_build();
        tlvmsg_bench::register_all();
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "codec_bench: %s\n", failure.what());
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
