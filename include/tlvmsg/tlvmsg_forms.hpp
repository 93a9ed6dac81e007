/*
 * tlvmsg_forms.hpp - messages of types that are known by their descriptors, as people read and write them, in C++20.
 *
 * What the functions of <tlvmsg/forms.h> do, promise and refuse is said there. Here what they hand out releases itself,
 * and what they return is a value or a fault. Nothing throws but std::string when memory runs out, in functions that
 * make JSON or the text of a fault. Programs link tlvmsg_forms.
 *
 * Example, which message is this, and what is in it?
 *
 *     auto guesses = tlvmsg::guess(packet);
 *     for (const tlvmsg_guess &each : guesses.value) {
 *         auto message = tlvmsg::decode(*each.types[0], packet);
 *         if (message) {
 *             std::cout << each.types[0]->name << ' ' << *tlvmsg::to_json(*message) << '\n';
 *         }
 *     }
 */
#ifndef TLVMSG_TLVMSG_FORMS_HPP
#define TLVMSG_TLVMSG_FORMS_HPP

#include <tlvmsg/forms.h>
#include <tlvmsg/tlvmsg_json.hpp>

#include <cstdio>
#include <type_traits>
#include <utility>

namespace tlvmsg {

/* ---- What is handed out ---------------------------------------------------------------------------------- */

/* Items in one block of the platform's pool, with all that they refer to. It moves, and what it moved from is empty. */
template <class Item>
class list {
public:
    list() noexcept = default;
    /* Takes the block over, to be released with tlvmsg_free. */
    list(Item *items, size_t count) noexcept : items_(items), count_(count) {}
    list(list &&other) noexcept
        : items_(std::exchange(other.items_, nullptr)), count_(std::exchange(other.count_, 0)) {}
    list &operator=(list &&other) noexcept {
        list taken(std::move(other));
        std::swap(items_, taken.items_);
        std::swap(count_, taken.count_);
        return *this;
    }
    ~list() { tlvmsg_free(items_); }

    size_t size() const noexcept { return count_; }
    bool empty() const noexcept { return count_ == 0; }
    const Item *data() const noexcept { return items_; }
    const Item *begin() const noexcept { return items_; }
    const Item *end() const noexcept { return items_ + count_; }
    const Item &operator[](size_t index) const noexcept { return items_[index]; }

private:
    Item *items_ = nullptr;
    size_t count_ = 0;
};

/*
 * A record of a type that is known at run time, together with the blocks of its dynamic arrays, which it releases. It
 * moves, and what it moved from has no record, as has one for which there was no memory: data() is null then.
 */
class any_record {
public:
    any_record() noexcept = default;
    /* All zero. */
    explicit any_record(const tlvmsg_type &type) noexcept
        : type_(&type), record_(tlvmsg_allocate(type.size)) {}
    any_record(any_record &&other) noexcept
        : type_(other.type_), record_(std::exchange(other.record_, nullptr)) {}
    any_record &operator=(any_record &&other) noexcept {
        any_record taken(std::move(other));
        std::swap(type_, taken.type_);
        std::swap(record_, taken.record_);
        return *this;
    }
    ~any_record() {
        tlvmsg_release(type_, record_);
        tlvmsg_free(record_);
    }

    const tlvmsg_type *type() const noexcept { return type_; }
    void *data() noexcept { return record_; }
    const void *data() const noexcept { return record_; }

private:
    const tlvmsg_type *type_ = nullptr;
    void *record_ = nullptr;
};

namespace detail {

inline void set_out_of_memory(fault &fault) noexcept { fault.code = TLVMSG_OUT_OF_MEMORY; }
inline void set_out_of_memory(text_fault &fault) noexcept { fault.code = TLVMSG_TEXT_OUT_OF_MEMORY; }

/* The record that `fill` fills, or why there is none. */
template <class Fault, class Fill>
result<any_record, Fault> filled(const tlvmsg_type &type, Fill fill) noexcept {
    result<any_record, Fault> made{any_record(type), {}};
    if (made.value.data() == nullptr) {
        set_out_of_memory(made.fault);
    } else if (!fill(made.value.data(), made.fault)) {
        made.value = any_record();
    }
    return made;
}

/* The list that `make` makes, or why there is none. */
template <class Item, class Make>
result<list<Item>, text_fault> listed(Make make) noexcept {
    result<list<Item>, text_fault> made;
    Item *items = nullptr;
    size_t count = 0;
    if (make(&items, &count, &made.fault)) {
        made.value = list<Item>(items, count);
    }
    return made;
}

/* A sink of C that hands on to a callable. */
template <class Sink>
bool hand_on(void *sink, const char *text, size_t length) {
    using callable = std::remove_reference_t<Sink>;
    static_assert(std::is_nothrow_invocable_r_v<bool, callable &, std::string_view>,
                  "a sink is called by C: it is noexcept, takes a std::string_view and gives a bool");
    return (*static_cast<callable *>(sink))(std::string_view(text, length));
}

/* What `tell` stores about what it told a sink, or why it could not tell all. */
template <class Value, class Sink, class Tell>
result<Value, text_fault> told(Sink &sink, Tell tell) noexcept {
    result<Value, text_fault> found{{}, {}};
    tell(hand_on<Sink>, &sink, &found.value, &found.fault);
    return found;
}

} // namespace detail

/* ---- Records of any type --------------------------------------------------------------------------------- */

/* Decodes; `*consumed` becomes the end of what was decoded, 0 on failure. */
inline result<any_record> decode(const tlvmsg_type &type, byte_view in, const tlvmsg_limits &limits = {},
                                 size_t *consumed = nullptr) noexcept {
    return detail::filled<fault>(type, [&](void *record, fault &fault) {
        return tlvmsg_decode(&type, in.data(), in.size(), &limits, record, consumed, &fault);
    });
}

inline result<list<uint8_t>> encode(const any_record &record) noexcept {
    result<list<uint8_t>> encoded;
    size_t size = 0;
    uint8_t *const bytes = tlvmsg_encode_alloc(record.type(), record.data(), &size, &encoded.fault);
    encoded.value = list<uint8_t>(bytes, size);
    return encoded;
}

inline result<any_record, text_fault> from_json(const tlvmsg_type &type, std::string_view text,
                                                const tlvmsg_limits &limits = {}) noexcept {
    return detail::filled<text_fault>(type, [&](void *record, text_fault &fault) {
        return tlvmsg_from_json(&type, text.data(), text.size(), &limits, record, &fault);
    });
}

inline result<std::string, text_fault> to_json(const any_record &record,
                                               const tlvmsg_json_options &options = {}) {
    return detail::text_of([&](char **text, size_t *length, text_fault *fault) {
        return tlvmsg_to_json(record.type(), record.data(), &options, text, length, fault);
    });
}

/* Encoded bytes as JSON and JSON as encoded bytes, without a record in between; see forms/bytes.h. `*consumed` becomes
 * the end of what was decoded, 0 on failure. */
inline result<std::string> bytes_to_json(const tlvmsg_type &type, byte_view in,
                                         const tlvmsg_limits &limits = {},
                                         const tlvmsg_json_options &options = {},
                                         size_t *consumed = nullptr) {
    return detail::text_of<fault>([&](char **text, size_t *length, tlvmsg_fault *fault) {
        return tlvmsg_bytes_to_json(&type, in.data(), in.size(), &limits, &options, text, length, consumed,
                                    fault);
    });
}

inline result<list<uint8_t>, text_fault> bytes_from_json(const tlvmsg_type &type, std::string_view text,
                                                         const tlvmsg_limits &limits = {}) noexcept {
    return detail::listed<uint8_t>([&](auto... out) {
        return tlvmsg_bytes_from_json(&type, text.data(), text.size(), &limits, out...);
    });
}

/* What can be read of bytes that are cut or broken. `*stopped` becomes where and why decoding stopped. */
inline result<std::string, text_fault> partial_to_json(const tlvmsg_type &type, byte_view in,
                                                       unsigned indent = 0, fault *stopped = nullptr) {
    return detail::text_of([&](char **text, size_t *length, text_fault *fault) {
        return tlvmsg_partial_to_json(&type, in.data(), in.size(), indent, text, length, stopped, fault);
    });
}

/* A record for tests; see forms/sample.h. */
inline result<any_record, text_fault> sample(const tlvmsg_type &type,
                                             const tlvmsg_sample_options &options = {}) noexcept {
    return detail::filled<text_fault>(type, [&](void *record, text_fault &fault) {
        return tlvmsg_sample(&type, &options, record, &fault);
    });
}

/* What differs between two records, member by member. Different types are refused as TLVMSG_TEXT_WRONG_VALUE. */
inline result<list<tlvmsg_difference>, text_fault> diff(const any_record &a, const any_record &b) noexcept {
    if (a.type() != b.type() && a.type() != nullptr && b.type() != nullptr) {
        result<list<tlvmsg_difference>, text_fault> refused;
        refused.fault.code = TLVMSG_TEXT_WRONG_VALUE;
        std::snprintf(refused.fault.path, sizeof refused.fault.path, "b");
        std::snprintf(refused.fault.message, sizeof refused.fault.message,
                      "found a record of %s, expected %s", b.type()->name, a.type()->name);
        return refused;
    }
    return detail::listed<tlvmsg_difference>(
        [&](auto... out) { return tlvmsg_diff(a.type(), a.data(), b.data(), out...); });
}

template <record_like A, record_like B>
requires std::is_same_v<detail::record_t<A>, detail::record_t<B>> result<list<tlvmsg_difference>, text_fault>
diff(const A &a, const B &b)
noexcept {
    return detail::listed<tlvmsg_difference>([&](auto... out) {
        return tlvmsg_diff(detail::type_of<A>(), &detail::raw(a), &detail::raw(b), out...);
    });
}

/* ---- Types ----------------------------------------------------------------------------------------------- */

/* A type, or the types of a set, of which null stands for all, as JSON; see forms/describe.h. */
inline result<std::string, text_fault> type_to_json(const tlvmsg_type &type,
                                                    const tlvmsg_json_options &options = {}) {
    return detail::text_of([&](auto... out) { return tlvmsg_type_to_json(&type, &options, out...); });
}

inline result<std::string, text_fault> types_to_json(const tlvmsg_type_set *set = nullptr,
                                                     const tlvmsg_json_options &options = {}) {
    return detail::text_of([&](auto... out) { return tlvmsg_types_to_json(set, &options, out...); });
}

/* ---- Bytes whose type nobody named ----------------------------------------------------------------------- */

/* Which types bytes are of, the best first; see forms/guess.h. A null set stands for all types. */
inline result<list<tlvmsg_guess>, text_fault> guess(byte_view in, const tlvmsg_guess_options &options = {},
                                                    const tlvmsg_type_set *set = nullptr) noexcept {
    return detail::listed<tlvmsg_guess>(
        [&](auto... out) { return tlvmsg_guess_types(set, in.data(), in.size(), &options, out...); });
}

/* The messages that fill the bytes; none where nothing but a guess would say which. */
inline result<list<tlvmsg_part>, text_fault> divide(byte_view in,
                                                    const tlvmsg_type_set *set = nullptr) noexcept {
    return detail::listed<tlvmsg_part>(
        [&](auto... out) { return tlvmsg_divide(set, in.data(), in.size(), out...); });
}

/* The messages that somebody wrote down as text, at least one. */
inline result<list<tlvmsg_hex_message>, text_fault> read_hex(std::string_view text) noexcept {
    return detail::listed<tlvmsg_hex_message>(
        [&](auto... out) { return tlvmsg_read_hex(text.data(), text.size(), out...); });
}

/* The same, and the lines that may hold one of several or none; the types decide what spelling leaves open. */
inline result<list<tlvmsg_hex_message>, text_fault> find_hex(std::string_view text,
                                                             const tlvmsg_hex_options &options) noexcept {
    return detail::listed<tlvmsg_hex_message>(
        [&](auto... out) { return tlvmsg_find_hex(text.data(), text.size(), &options, out...); });
}

/* ---- Texts in pieces ------------------------------------------------------------------------------------- */

/*
 * These hand their text, piece by piece, to a sink: a callable that takes a std::string_view and gives false to stop,
 * and that is noexcept, since C calls it. A sink that stops has to remember that it did: the result is then a value of
 * no use, without a fault.
 */

/* A record, a line a value. Gives whether the text is complete. */
template <class Sink>
result<bool, text_fault> to_text(const any_record &record, Sink &&sink,
                                 const tlvmsg_text_options &options = {}) noexcept {
    result<bool, text_fault> complete{false, {}};
    complete.value =
        tlvmsg_to_text(record.type(), record.data(), &options, detail::hand_on<Sink>, &sink, &complete.fault);
    return complete;
}

/* Every byte explained, by the type or, when that is null, by tags. Gives how the bytes fit it. */
template <class Sink>
result<tlvmsg_verdict, text_fault> annotate(const tlvmsg_type *type, byte_view in, Sink &&sink,
                                            const tlvmsg_text_options &options = {},
                                            const tlvmsg_type_set *set = nullptr) noexcept {
    return detail::told<tlvmsg_verdict>(sink, [&](auto... out) {
        return tlvmsg_annotate(set, type, in.data(), in.size(), &options, out...);
    });
}

/* Elements whose type nobody named. Gives where the first one begins that is not whole. */
template <class Sink>
result<size_t, text_fault> untyped_to_json(byte_view in, Sink &&sink, const tlvmsg_json_options &options = {},
                                           const tlvmsg_type_set *set = nullptr) noexcept {
    return detail::told<size_t>(sink, [&](auto... out) {
        return tlvmsg_untyped_to_json(set, in.data(), in.size(), &options, out...);
    });
}

template <class Sink>
result<size_t, text_fault> untyped_to_text(byte_view in, Sink &&sink, const tlvmsg_text_options &options = {},
                                           const tlvmsg_type_set *set = nullptr) noexcept {
    return detail::told<size_t>(sink, [&](auto... out) {
        return tlvmsg_untyped_to_text(set, in.data(), in.size(), &options, out...);
    });
}

} // namespace tlvmsg

#endif
