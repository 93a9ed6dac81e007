#include "inspect/samples.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace tlvmsg_test {

Sample::Sample(const tlvmsg_type &type, uint64_t seed, Counts counts, uint32_t choice, uint8_t background)
    : type_(type), storage_((type.size + readable_behind_record) / sizeof(uint64_t) + 1),
      record_(reinterpret_cast<uint8_t *>(storage_.data())) {
    std::memset(record_, background, type.size);
    RandomRecord(seed, counts, choice).fill(type, record_);
}

Sample::~Sample() { tlvmsg_release(&type_, record_); }

Bytes Sample::encoded(tlvmsg_fault *fault) const {
    size_t size = 0;
    if (!tlvmsg_size(&type_, record_, &size, fault)) {
        return {};
    }
    Bytes bytes(size + 1); // of size 0 it would have no address
    tlvmsg_encode(&type_, record_, bytes.data(), size, &size, fault);
    bytes.resize(size);
    return bytes;
}

void for_each_type_of(const std::string &family, const std::function<void(const tlvmsg_type &)> &visit) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        if (tlvmsg_type_at(i)->family == family) {
            visit(*tlvmsg_type_at(i));
        }
    }
}

std::vector<std::string> families() {
    std::set<std::string> names;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        names.insert(tlvmsg_type_at(i)->family);
    }
    return {names.begin(), names.end()};
}

void for_each_sample(const tlvmsg_type &type, const std::function<void(uint64_t, Counts, uint32_t)> &visit) {
    uint64_t seed = 1;
    for (const Counts counts : {Counts::Zero, Counts::One, Counts::Capacity, Counts::Random}) {
        for (uint32_t choice = 0; choice < choices(type); ++choice) {
            visit(seed++, counts, choice);
        }
    }
}

void for_each_valid(const tlvmsg_type &type, const std::function<void(const Bytes &)> &visit) {
    for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
        tlvmsg_fault fault;
        const Bytes bytes = Sample(type, seed, counts, choice).encoded(&fault);
        if (fault.code == TLVMSG_OK) {
            visit(bytes);
        }
    });
}

Mutator::Mutator(const tlvmsg_type &type, const Bytes &valid) : valid_(valid) {
    const auto keep = [](void *pieces, const tlvmsg_piece *piece) {
        static_cast<std::vector<tlvmsg_piece> *>(pieces)->push_back(*piece);
    };
    tlvmsg_trace(&type, valid.data(), valid.size(), nullptr, keep, &pieces_, nullptr, nullptr);
}

namespace {

template <class T>
T any_of(std::mt19937_64 &random, const std::vector<T> &values) {
    return values[static_cast<size_t>(random() % values.size())];
}

void put16(Bytes &bytes, size_t at, uint64_t value) {
    bytes[at] = static_cast<uint8_t>(value >> 8);
    bytes[at + 1] = static_cast<uint8_t>(value);
}

size_t get16(const Bytes &bytes, size_t at) { return size_t{bytes[at]} << 8 | bytes[at + 1]; }

void change_header(Bytes &bytes, size_t at, std::mt19937_64 &random) {
    const size_t length = get16(bytes, at + 2);
    const size_t end = std::min(bytes.size(), at + 4 + length);
    switch (random() % 4) {
    case 0:
        return put16(bytes, at, any_of<uint64_t>(random, {0, 1, 2, 4, 6, 10, 1001, get16(bytes, at) + 1}));
    case 1:
        return put16(bytes, at + 2,
                     any_of<uint64_t>(random, {0, length - 1, length + 1, length + 4, length / 2, 8,
                                               bytes.size() - at - 4, bytes.size() - at - 3, 65535}));
    case 2:
        bytes.erase(bytes.begin() + static_cast<ptrdiff_t>(at), bytes.begin() + static_cast<ptrdiff_t>(end));
        return;
    default:
        const Bytes element(bytes.begin() + static_cast<ptrdiff_t>(at),
                            bytes.begin() + static_cast<ptrdiff_t>(end));
        bytes.insert(bytes.begin() + static_cast<ptrdiff_t>(end), element.begin(), element.end());
        return;
    }
}

} // namespace

Bytes Mutator::mutated(std::mt19937_64 &random) const {
    Bytes bytes = valid_;
    for (uint64_t i = random() % 3; !pieces_.empty() && i < 3; ++i) {
        const tlvmsg_piece &piece = any_of(random, pieces_);
        if (piece.offset + piece.size > bytes.size()) {
            continue; // gone by an earlier mutation
        }
        if (piece.kind == TLVMSG_PIECE_HEADER) {
            change_header(bytes, piece.offset, random);
        } else if (piece.kind == TLVMSG_PIECE_COUNT) {
            put16(bytes, piece.offset,
                  any_of<uint64_t>(random, {0, 1, piece.value - 1, piece.value + 1, 255, 256, 2000, 65535}));
        } else {
            bytes[piece.offset + piece.size - 1] = static_cast<uint8_t>(random() % 40);
        }
    }
    return bytes;
}

} // namespace tlvmsg_test
