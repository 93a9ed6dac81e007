// What is measured on each row. The wall-clock benchmarks and the instruction counts both visit this list,
// and get each operation as a type of its own, so that nothing but the operation stands in their loops.
#pragma once

#include "buffers.h"
#include "fields.h"

#include <benchmark/benchmark.h>

#include <tlvmsg/inspect.h>

namespace tlvmsg_bench {

// Makes the compiler believe that the result is used and all memory read and written, so that it moves nothing out of
// the loop.
template <class Result>
void keep(Result result) {
    benchmark::DoNotOptimize(result);
    benchmark::ClobberMemory();
}

template <class Field>
void store_alone(Field &to, Field from) {
    to = from;
    benchmark::ClobberMemory();
}

#define STORE_ALONE(FIELD, Accessor) store_alone(to.FIELD, from.FIELD);
inline void store_fields(app_sess_hdr &to, const app_sess_hdr &from) { SESSION_FIELDS(STORE_ALONE) }
inline void store_fields(ifid &to, const ifid &from) { INTERFACE_FIELDS(STORE_ALONE) }
inline void store_fields(zel_led_control &to, const zel_led_control &from) { LED_CONTROL_FIELDS(STORE_ALONE) }
inline void store_fields(zel_ether_dot3_stats_bundle &to, const zel_ether_dot3_stats_bundle &from) {
    DOT3_FIELDS(STORE_ALONE)
}
#undef STORE_ALONE

inline void store_fields(analogbri_led_control_req_message &to,
                         const analogbri_led_control_req_message &from) {
    store_fields(to.session, from.session);
    store_fields(to.interface, from.interface);
    store_fields(to.led_control, from.led_control);
}
inline void store_fields(ether_dot3_stats_update_message &to, const ether_dot3_stats_update_message &from) {
    store_fields(to.session, from.session);
    store_fields(to.interface, from.interface);
    store_fields(to.dot3_stats_bundle, from.dot3_stats_bundle);
}

// Callers often encode right after they filled in the record. Loads wider than the stores just before them
// wait until those have left the store buffer, so these two show what an encoder does to such callers.
template <class AnyRow, class Visit>
void visit_filling(const AnyRow &row, const RowBuffers<AnyRow> &buffers, const Visit &visit) {
    if constexpr (requires { store_fields(buffers.fields(), row.values); }) {
        visit("fill", "stores", [&] {
            store_fields(buffers.fields(), row.values);
            keep(&buffers.fields());
        });
        visit("fill_encode", "exact", [&] {
            store_fields(buffers.fields(), row.values);
            keep(AnyRow::encode(&buffers.fields(), buffers.out()));
        });
    }
}

template <class AnyRow, class Visit>
void visit_memcpy(const RowBuffers<AnyRow> &buffers, const Visit &visit) {
    visit("encode", "memcpy", [&] { keep(std::memcpy(buffers.out(), buffers.wire(), buffers.wire_size())); });
    const size_t block = block_size(buffers.values());
    if (block == 0) {
        visit("decode", "memcpy",
              [&] { keep(std::memcpy(buffers.out(), buffers.wire(), buffers.wire_size())); });
    } else {
        visit("decode", "memcpy", [&buffers, block] {
            void *memory = std::malloc(block);
            keep(memory);
            keep(std::memcpy(buffers.out(), buffers.wire(), buffers.wire_size()));
            std::free(memory);
        });
    }
}

// The least that any codec of a text does: it copies the characters between their places in the record and on the
// wire, and clears the record behind them. These places lie at different offsets within a cache line, so this takes
// longer than the memcpy of the whole message.
template <class AnyRow, class Visit>
void visit_text(const RowBuffers<AnyRow> &buffers, const Visit &visit) {
    if constexpr (requires { text_of(buffers.fields()); }) {
        const Text from = text_of(buffers.fields());
        const Text to = text_of(buffers.decoded());
        const size_t offset = buffers.wire_size() - from.length - 1;
        visit("encode", "text",
              [=, &buffers] { keep(std::memcpy(buffers.out() + offset, from.bytes, from.length)); });
        visit("decode", "text", [=, &buffers] {
            keep(std::memcpy(to.bytes, buffers.wire() + offset, to.length));
            keep(std::memset(to.bytes + to.length, 0, to.capacity - to.length));
        });
    }
}

template <class AnyRow, class Visit>
void visit_exact(const RowBuffers<AnyRow> &buffers, const Visit &visit) {
    visit("size", "exact", [&] { keep(AnyRow::size(&buffers.values())); });
    visit("encode", "exact", [&] { keep(AnyRow::encode(&buffers.values(), buffers.out())); });
    visit("decode", "exact", [&] {
        keep(AnyRow::decode(buffers.wire(), &buffers.decoded()));
        release(buffers.decoded());
    });
}

inline void require(bool accepted, const char *operation) {
    if (!accepted) {
        throw std::logic_error(std::string("the bounded ") + operation + " refuses a valid message");
    }
}

template <class AnyRow, class Visit>
void visit_bounded(const AnyRow &row, const RowBuffers<AnyRow> &buffers, const Visit &visit) {
    const tlvmsg_type *type = tlvmsg_type_find(row.type_name);
    const auto size = [type, &buffers] {
        size_t bytes;
        return tlvmsg_size(type, &buffers.values(), &bytes, nullptr);
    };
    const auto encode = [type, &buffers] {
        size_t written;
        return tlvmsg_encode(type, &buffers.values(), buffers.out(), buffers.wire_size(), &written, nullptr);
    };
    const auto verify = [type, &buffers] {
        return tlvmsg_verify(type, buffers.wire(), buffers.wire_size(), nullptr, nullptr, nullptr);
    };
    const auto decode = [type, &buffers] {
        const bool accepted = tlvmsg_decode(type, buffers.wire(), buffers.wire_size(), nullptr,
                                            &buffers.decoded(), nullptr, nullptr);
        release(buffers.decoded());
        return accepted;
    };
    require(size(), "size");
    require(encode(), "encode");
    require(verify(), "verify");
    require(decode(), "decode");
    visit("size", "bounded", [size] { keep(size()); });
    visit("encode", "bounded", [encode] { keep(encode()); });
    visit("verify", "bounded", [verify] { keep(verify()); });
    visit("decode", "bounded", [decode] { keep(decode()); });
}

// Calls visit(operation, subject, callable) for each. The buffers must outlive the callables.
template <class AnyRow, class Visit>
void for_each_operation(const AnyRow &row, const RowBuffers<AnyRow> &buffers, const Visit &visit) {
    visit_memcpy(buffers, visit);
    visit_text(buffers, visit);
    visit_exact(buffers, visit);
    visit_filling(row, buffers, visit);
    visit_bounded(row, buffers, visit);
}

} // namespace tlvmsg_bench
