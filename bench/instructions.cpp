// Counts the instructions of the rows' operations: no noise reaches these numbers. Under
//
//     valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file=FILE instructions
//
// the count of each operation is written to a FILE.n of its own that names the benchmark. It is for as many executions
// as the program prints, the loop included. `report --callgrind` makes a table of the counts.
#include "operations.h"

#include <valgrind/callgrind.h>

#include <cstdio>
#include <string>

namespace {

constexpr int times = 1000;

template <class AnyRow>
void count_row(const AnyRow &row) {
    const tlvmsg_bench::RowBuffers<AnyRow> buffers(row);
    tlvmsg_bench::for_each_operation(
        row, buffers, [&row](const char *operation, const char *subject, auto run) {
            const std::string name = std::string("row/") + row.name + "/" + operation + "/" + subject;
            run(); // lets the dynamic linker find the operation
            CALLGRIND_START_INSTRUMENTATION;
            CALLGRIND_ZERO_STATS;
            for (int i = 0; i < times; ++i) {
                run();
            }
            CALLGRIND_DUMP_STATS_AT(name.c_str());
            CALLGRIND_STOP_INSTRUMENTATION;
        });
}

} // namespace

int main() {
    std::printf("%d\n", times);
    tlvmsg_bench::for_each_row([](const auto &row) { count_row(row); });
}
