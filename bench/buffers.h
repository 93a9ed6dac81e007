// The buffers that measured operations read and write. Where they lie decides as much as the code does: all start at
// a cache line, and what is read and what is written are half a page apart modulo the page size, since a load
// that follows a store to the same place in another page waits for it.
#pragma once

#include "records.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

namespace tlvmsg_bench {

class Buffer {
public:
    enum class For { Reading, Writing };

    Buffer(size_t size, For purpose)
        : memory_(static_cast<uint8_t *>(std::aligned_alloc(page, (size / page + 2) * page))),
          start_(memory_.get() + (purpose == For::Writing ? page / 2 + 64 : 0)) {
        if (memory_ == nullptr) {
            throw std::bad_alloc();
        }
        std::memset(memory_.get(), 0, (size / page + 2) * page);
    }

    uint8_t *data() const { return start_; }

private:
    struct Free {
        void operator()(uint8_t *memory) const { std::free(memory); }
    };
    static constexpr size_t page = 4096;

    std::unique_ptr<uint8_t, Free> memory_;
    uint8_t *start_;
};

// A row's record and its bytes, and room for the results.
template <class AnyRow>
class RowBuffers {
public:
    using record = typename AnyRow::record;

    explicit RowBuffers(const AnyRow &row)
        : record_(sizeof(record), Buffer::For::Reading), wire_(max_wire, Buffer::For::Reading),
          out_(max_wire, Buffer::For::Writing), decoded_(sizeof(record), Buffer::For::Writing) {
        std::memcpy(record_.data(), &row.values, sizeof(record));
        wire_size_ = static_cast<size_t>(AnyRow::encode(&values(), wire()) - wire());
        check(row);
    }

    const record &values() const { return *reinterpret_cast<const record *>(record_.data()); }
    record &fields() const { return *reinterpret_cast<record *>(record_.data()); }
    uint8_t *wire() const { return wire_.data(); }
    size_t wire_size() const { return wire_size_; }
    uint8_t *out() const { return out_.data(); }
    record &decoded() const { return *reinterpret_cast<record *>(decoded_.data()); }

    // Whether a record says what this row's record does.
    bool matches(const record &other) const {
        return AnyRow::size(&other) == wire_size_ && AnyRow::encode(&other, out()) == out() + wire_size_ &&
               std::memcmp(out(), wire(), wire_size_) == 0;
    }

private:
    static constexpr size_t max_wire = 65536;

    // Throws when an operation does not do its work: then its time means nothing.
    void check(const AnyRow &row) const {
        const bool whole = AnyRow::decode(wire(), &decoded()) == wire() + wire_size_;
        if (!whole || !matches(decoded())) {
            throw std::logic_error(std::string(row.name) + ": what was encoded decodes to something else");
        }
        release(decoded());
    }

    Buffer record_;
    Buffer wire_;
    Buffer out_;
    Buffer decoded_;
    size_t wire_size_ = 0;
};

} // namespace tlvmsg_bench
