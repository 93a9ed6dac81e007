// Included before all else when the copy is built: `mutant<N>()` says whether mutant N is the one to be, which the
// environment chooses, and notes that it was asked.
#pragma once

#ifdef __cplusplus
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>

extern "C" __attribute__((visibility("hidden"), weak)) const unsigned __start_mutants[], __stop_mutants[];

namespace mutants {

inline constexpr std::size_t most = 1 << 16;
enum : unsigned char { built = 1, reached = 2 };

__attribute__((visibility("hidden"))) inline unsigned char nobody_asks[most];
__attribute__((visibility("hidden"))) inline unsigned char *notes = nobody_asks;
__attribute__((visibility("hidden"))) inline unsigned chosen = 0;

__attribute__((constructor(101))) static void begin() {
    const char *const file = std::getenv("MUTANT_NOTES");
    if (notes == nobody_asks && file != nullptr) {
        void *const map =
            mmap(nullptr, most, PROT_READ | PROT_WRITE, MAP_SHARED, open(file, O_RDWR | O_CLOEXEC), 0);
        notes = map == MAP_FAILED ? nobody_asks : static_cast<unsigned char *>(map);
        for (const unsigned *each = __start_mutants; each < __stop_mutants; ++each) {
            notes[*each] |= built;
        }
    }
    const char *const number = std::getenv("MUTANT");
    chosen = number == nullptr ? 0 : static_cast<unsigned>(std::atoi(number));
}

} // namespace mutants

// Constant expressions stay as they are; what only they ask is in no section.
template <unsigned N>
__attribute__((always_inline)) constexpr bool mutant() {
    if (__builtin_is_constant_evaluated()) {
        return false;
    }
    __asm__ volatile(".pushsection mutants,\"a\"\n.long %c0\n.popsection" : : "i"(N));
    mutants::notes[N] |= mutants::reached;
    return mutants::chosen == N;
}
#endif
