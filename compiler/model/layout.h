// Where C compilers put the fields of records. Generated code does not rely on it: its own compiler lays
// records out, and assertions compare. It serves what exists without a compiler: the interface baseline.
#pragma once

#include "compiler/model/model.h"

#include <map>

namespace tlvc {

// The properties in which platforms that records live on differ.
struct DataModel {
    uint64_t pointer;
    uint64_t alignment; // of numbers: their size, but not more than this
};
inline constexpr DataModel lp64{8, 8};
inline constexpr DataModel ilp32{4, 8};
inline constexpr DataModel i386{4, 4};

struct AlignedNumber {
    uint64_t number;
};
inline constexpr DataModel native{sizeof(void *), alignof(AlignedNumber)};

struct RecordLayout {
    uint64_t size = 0;
    uint64_t alignment = 1;
    std::vector<uint64_t> offsets; // of the type's fields
};

class Layouts {
public:
    explicit Layouts(const DataModel &model) : model_(model) {}

    // The layout of a type's record; that of a number for a scalar or an enumeration.
    const RecordLayout &of(const Type &type);

    // Of the field that the path leads to. Alternatives are steps, as fields are.
    uint64_t offset(const Type &record, const std::vector<std::string> &path);

private:
    RecordLayout lay_out(const Type &type);
    RecordLayout of_field(const Type &owner, const Field &field);

    DataModel model_;
    std::map<const Type *, RecordLayout> known_;
};

} // namespace tlvc
