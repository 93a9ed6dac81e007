// Structures: members in order inside an element of the type's own tag.
#pragma once

#include "member.h"

namespace tlvmsg::rules {

// Fixed structures up to this encoded size are repeated in each message that holds them.
constexpr bool is_repeated(uint32_t fixed_size) { return fixed_size != 0 && fixed_size <= 64; }

template <uint16_t Tag, class Record, class... Members>
struct structure {
    using record = Record;
    static constexpr Form form{
        .fixed_size = size_in_element(sum<&Form::fixed_size, Members...>),
        .presumed_size = size_in_element(sum<&Form::presumed_size, Members...>),
        .allocates = (allocates<Members> || ...),
        .called = is_repeated(size_in_element(sum<&Form::fixed_size, Members...>)) ? Called::ToDecode
                                                                                   : Called::Always,
    };

    template <Library For>
    static uint64_t measure(const record *in) {
        if (is_full(in)) {
            return form.presumed_size;
        }
        return element_size<For>((Members::template measure<For>(in) + ... + uint64_t{header_size}));
    }

    template <Library For>
    [[gnu::always_inline]] static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        if (is_full(in)) {
            put(in, out);
            return out + form.presumed_size;
        }
        const uint64_t size = measure<Library::Exact>(in);
        wire::store32(out, wire::header(Tag, static_cast<uint16_t>(size - header_size)));
        out += header_size;
        ((out = Members::template encode<For>(in, out)), ...);
        return out;
    }

    [[gnu::always_inline]] static bool is_full(const record *in) {
        if constexpr (form.presumed_size != 0) {
            return (Members::is_full(in) && ...);
        }
        return false;
    }

    [[gnu::always_inline]] static void put(const record *in, uint8_t *out) {
        if constexpr (form.presumed_size != 0) {
            wire::store32(out, exact_header);
            out += header_size;
            ((Members::put(in, out), out += presumed_size<Members>), ...);
        }
    }

    // Once the own tag is right the result is the end that the own length gives, whatever the members did:
    // peers may append members, or leave trailing ones out. A null record receives nothing.
    [[gnu::noinline]] static const uint8_t *decode(const uint8_t *in, record *out) {
        const Element element = read_element(in);
        if (!element.is(Tag)) {
            return nullptr;
        }
        if (out != nullptr) {
            const uint8_t *at = element.value;
            ((Members::preset(out), at = Members::decode(at, out)), ...);
        }
        return element.end;
    }

    static bool covers(const uint8_t *in) { return wire::difference(in, exact_header) == 0; }
    [[gnu::always_inline]] static constexpr uint32_t mismatch(auto in) {
        uint32_t differences = difference(in, exact_header);
        in += header_size;
        ((differences |= Members::mismatch(in), in += presumed_size<Members>), ...);
        return differences;
    }
    [[gnu::always_inline]] static void take(const uint8_t *in, record *out) {
        in += header_size;
        ((Members::take(in, out), in += presumed_size<Members>), ...);
    }
    [[gnu::always_inline]] static void clear_padding(record *out) {
        clear_gaps<Members...>(out);
        (Members::clear_padding(out), ...);
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        const uint8_t *end = end_of_element(in, input, Tag);
        if (end == nullptr) {
            return nullptr;
        }
        const uint8_t *at = accept_members<Members...>(in + header_size, input, out);
        return at == end ? end : nullptr;
    }

private:
    static constexpr uint32_t exact_header =
        wire::header(Tag, static_cast<uint16_t>(form.presumed_size - header_size));
};

} // namespace tlvmsg::rules
