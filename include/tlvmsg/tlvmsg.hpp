/*
 * tlvmsg.hpp - the bounded operations for C++20.
 *
 * Programs include <tlvmsg/FAMILY.hpp> or <tlvmsg/all.hpp>, which bring this header, the family's records and
 * what is known about each. The records are the C structures of <tlvmsg/FAMILY.h>. What operations do, promise
 * and refuse is said in inspect.h; here they have types, owners and spans. Programs link tlvmsg_inspect.
 *
 * Example:
 *
 *     auto request = tlvmsg::decode<analogbri_led_control_req_message>(packet);
 *     if (!request) {
 *         // error[truncated]: ...led_control: needs 28 bytes, 27 are left at byte 92
 *         log_error(request.fault.text());
 *         return;
 *     }
 *     set_led(request->led_control.slot, request->led_control.color);      // request owns the record
 *
 *     tlvmsg::owned<if_name> interface;                                    // all zero
 *     auto name = tlvmsg::assign(interface->name, "eth0");                 // allocates what belongs to it
 *     auto bytes = tlvmsg::encode(interface);                              // a vector, or a fault
 *
 * Nothing here throws, and exceptions and run-time type information may be switched off. Memory of records
 * comes from the platform's pool, and its lack is a fault; that of a std::vector comes from where such memory
 * always comes from.
 *
 * Printing is in tlvmsg_format.hpp, JSON in tlvmsg_json.hpp.
 */
#ifndef TLVMSG_TLVMSG_HPP
#define TLVMSG_TLVMSG_HPP

#if __cplusplus < 202002L
#error "tlvmsg.hpp needs C++20: -std=c++20, or target_compile_features(... cxx_std_20)"
#endif

#include <tlvmsg/typed.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>
#include <version>

#ifdef __cpp_lib_expected
#include <expected>
#endif

namespace tlvmsg {

/* ---- Types ----------------------------------------------------------------------------------------------- */

/*
 * What is known about the record T; FAMILY.hpp specializes it.
 *
 *     kind           its tlvmsg_kind
 *     holds_blocks   whether there is a dynamic array in it
 *     max_encoded    the most bytes that its encoding can have, a constant. With a dynamic array that is what the lengths
 *                    of elements can say, some 64 KiB an element, so such messages are rather encoded to a vector.
 *     type()         its descriptor
 *     key            its key; only of messages that have one
 *     visit()        see tlvmsg::visit; not for arrays
 */
template <class T>
struct traits;

/* Records: FAMILY.hpp has those of all messages of a family as messages_of_FAMILY, and all of its own as types_of_FAMILY.
 * tlvmsg_dispatch.hpp says what such lists are for. */
template <class... T>
struct type_list {};

/* A type with a record of its own, and those that are arrays. Enumerations are all uint32_t in C. */
template <class T>
concept record_type = requires {
    traits<T>::kind;
};

template <class T>
concept byte_array_type = record_type<T> &&
    (traits<T>::kind == TLVMSG_BYTE_ARRAY || traits<T>::kind == TLVMSG_DYNAMIC_BYTES);
template <class T>
concept item_array_type = record_type<T> &&
    (traits<T>::kind == TLVMSG_ELEMENT_ARRAY || traits<T>::kind == TLVMSG_PACKED_ARRAY ||
     traits<T>::kind == TLVMSG_DYNAMIC_ELEMENTS);
template <class T>
concept array_type = byte_array_type<T> || item_array_type<T>;

/* ---- Bytes and faults ------------------------------------------------------------------------------------ */

namespace detail {

template <class T>
constexpr bool is_byte =
    std::is_same_v<T, uint8_t> || std::is_same_v<T, std::byte> || std::is_same_v<T, char>;

template <class T>
constexpr bool is_literal = false;
template <size_t N>
constexpr bool is_literal<const char[N]> = true;

template <class T>
concept byte_range = !is_literal<T> && requires(T & range) {
    requires std::is_convertible_v<decltype(std::size(range)), size_t>;
    requires is_byte<std::remove_cv_t<std::remove_pointer_t<decltype(std::data(range))>>>;
};

} // namespace detail

/*
 * Bytes to read: a range of uint8_t, std::byte or char that knows its size, as vectors, spans, std::string and arrays
 * do, with all that is in it. A string literal is none, for its zero byte; nor is a pointer. The bytes are referred to
 * and have to last as long as the view, which is for parameters.
 */
class byte_view {
public:
    template <class T>
    requires(!std::is_same_v<std::remove_cvref_t<T>, byte_view> &&
             detail::byte_range<std::remove_reference_t<T>>) byte_view(T &&bytes)
    noexcept : data_(reinterpret_cast<const uint8_t *>(std::data(bytes))), size_(std::size(bytes)) {}

    const uint8_t *data() const noexcept { return data_; }
    size_t size() const noexcept { return size_; }

private:
    const uint8_t *data_;
    size_t size_;
};

/* A line of text, held without an allocation. It is a std::string_view, and where one is asked for a std::string. */
class line {
public:
    const char *c_str() const noexcept { return text_; }
    operator std::string_view() const noexcept { return text_; }

    /* A template, so that nobody includes <string> or <ostream> for it who does not use them. */
    template <class String>
    requires std::is_same_v<String, std::string>
    operator String() const { return String(text_); }

    template <class Traits>
    friend std::basic_ostream<char, Traits> &operator<<(std::basic_ostream<char, Traits> &out,
                                                        const line &line) {
        return out << line.c_str();
    }

private:
    friend struct fault;
    char text_[TLVMSG_FAULT_TEXT];
};

/* Why something was refused. When nothing was, only `code` has a meaning. */
struct fault : tlvmsg_fault {
    fault() noexcept {
        code = TLVMSG_OK;
        offset = 0;
        found = allowed = 0;
        path[0] = '\0'; /* nobody reads the rest of it */
    }

    std::string_view name() const noexcept { return tlvmsg_code_name(code); } /* "count-exceeds-capacity" */

    line text() const noexcept { /* "error[count-exceeds-capacity]: zel_mac_addr.mac.count: 7 exceeds ..." */
        line result;
        tlvmsg_fault_text(this, result.text_, sizeof result.text_);
        return result;
    }

    line message() const noexcept { /* the same without "error[code]: " */
        line result;
        tlvmsg_fault_message(this, result.text_, sizeof result.text_);
        return result;
    }
};

/*
 * A value, or the fault because of which there is none: operator bool says whether there is a value. A temporary result
 * gives its value away, so that `for (auto byte : *encode(record))` has a vector that lasts as long as the loop.
 *
 * value_or gives the value, or another in its place. Where the library has std::expected, a result becomes one:
 * `std::expected<tlvmsg::owned<ifid>, tlvmsg::fault> interface = tlvmsg::decode<ifid>(packet);`.
 */
template <class T, class Fault = fault>
struct [[nodiscard]] result {
    T value;
    Fault fault;

    explicit operator bool() const noexcept { return fault.code == 0; }
    T &operator*() &noexcept { return value; }
    const T &operator*() const &noexcept { return value; }
    T operator*() &&noexcept { return static_cast<T &&>(value); }
    T operator*() const && = delete;

    /* Leads to the members of the value, and where that owns a record to those of the record. */
    auto *operator->() &noexcept { return address(value); }
    auto *operator->() const &noexcept { return address(value); }
    auto *operator->() &&noexcept { return address(static_cast<T &&>(value)); }
    auto *operator->() const &&noexcept { return address(static_cast<const T &&>(value)); }

    template <class Other>
    T value_or(Other &&other) const & {
        return *this ? value : static_cast<T>(static_cast<Other &&>(other));
    }
    template <class Other>
    T value_or(Other &&other) && {
        return *this ? static_cast<T &&>(value) : static_cast<T>(static_cast<Other &&>(other));
    }

#ifdef __cpp_lib_expected
    operator std::expected<T, Fault>() const &requires std::is_copy_constructible_v<T> {
        return *this ? std::expected<T, Fault>(value) : std::unexpected(fault);
    }
    operator std::expected<T, Fault>() && {
        return *this ? std::expected<T, Fault>(static_cast<T &&>(value)) : std::unexpected(fault);
    }
#endif

private:
    template <class U>
    static auto *address(U &&value) noexcept {
        if constexpr (requires { value.operator->(); }) {
            return static_cast<U &&>(value).operator->();
        } else {
            return &value;
        }
    }
};

/* ---- Records --------------------------------------------------------------------------------------------- */

namespace detail {

struct unset {};

} // namespace detail

/*
 * A record together with the blocks of its dynamic arrays, which it releases. It moves, and copies only by
 * tlvmsg::copy. Members are read and written through ->, blocks come and go by assign and resize.
 *
 * What would leave a block to two owners or to none does not compile, nor does what would outlive its owner: * gives a
 * record with blocks as a constant, and behind -> of a temporary owner members are volatile, so that
 * decode<T>(in)->session.msg_type is a number as always, but items, bytes and text refuse decode<T>(in)->ports.
 */
template <record_type T>
class owned {
public:
    /* All zero: arrays are empty. */
    owned() noexcept { clear(); }
    explicit owned(detail::unset) noexcept {} // NOLINT(clang-analyzer-optin*): decode fills it
    owned(owned &&other) noexcept : record_(other.release()) {}
    owned &operator=(owned &&other) noexcept {
        if (this != &other) {
            reset();
            record_ = other.release();
        }
        return *this;
    }
    ~owned() { release_blocks(); }

    /* Takes a record over that C code has filled, whose blocks nobody else releases. */
    static owned adopt(const T &record) noexcept {
        owned result{detail::unset()};
        result.record_ = record;
        return result;
    }

    /* Gives the record away, to be released with tlvmsg_release; what stays is zero. */
    T release() noexcept {
        T record = record_;
        clear();
        return record;
    }

    void reset() noexcept {
        release_blocks();
        clear();
    }

    std::conditional_t<traits<T>::holds_blocks, const T, T> &operator*() &noexcept { return record_; }
    const T &operator*() const &noexcept { return record_; }
    T operator*() const &&noexcept requires(!traits<T>::holds_blocks) { return record_; }
    T operator*() const &&requires(traits<T>::holds_blocks) = delete;
    T *operator->() &noexcept { return &record_; }
    const T *operator->() const &noexcept { return &record_; }
    const volatile T *operator->() const &&noexcept { return &record_; }

private:
    void clear() noexcept { std::memset(&record_, 0, sizeof record_); }
    void release_blocks() noexcept {
        if constexpr (traits<T>::holds_blocks) {
            tlvmsg_sized_release(&traits<T>::type(), sizeof record_, &record_);
        }
    }

    T record_;
};

namespace detail {

template <class T>
struct record_of {};
template <record_type T>
struct record_of<T> {
    using type = T;
};
template <class T>
struct record_of<owned<T>> {
    using type = T;
};
template <class R>
using record_t = typename record_of<R>::type;

template <class R>
const record_t<R> &raw(const R &record) noexcept {
    if constexpr (record_type<R>) {
        return record;
    } else {
        return *record;
    }
}

template <class R>
const tlvmsg_type *type_of() noexcept {
    return &traits<record_t<R>>::type();
}

} // namespace detail

/* A record, or an owned one. */
template <class R>
concept record_like = requires {
    typename detail::record_t<R>;
};

/* ---- Operations ------------------------------------------------------------------------------------------ */

/* Default limits, and nothing that is merely tolerated. */
inline constexpr tlvmsg_limits strict{0, true, {}};

/* Decodes; `*consumed` becomes the end of what was decoded, 0 on failure. */
template <record_type T>
result<owned<T>> decode(byte_view in, const tlvmsg_limits &limits = {}, size_t *consumed = nullptr) noexcept {
    result<owned<T>> decoded{owned<T>(detail::unset()), {}};
    tlvmsg_sized_decode(&traits<T>::type(), sizeof(T), in.data(), in.size(), &limits,
                        decoded.value.operator->(), consumed, &decoded.fault);
    return decoded;
}

/*
 * Decodes into a record that is there, whose earlier content is released first: `in` must not lie in its blocks. The
 * result is the end of what was decoded. On failure the record is all zero.
 *
 *     tlvmsg::owned<analogbri_led_control_req_message> request;
 *     if (tlvmsg::decode(packet, request)) {
 *         set_led(request->led_control.slot, request->led_control.color);
 *     }
 */
template <class T>
result<size_t> decode(byte_view in, owned<T> &record, const tlvmsg_limits &limits = {}) noexcept {
    result<size_t> consumed{0, {}};
    record.reset();
    tlvmsg_sized_decode(&traits<T>::type(), sizeof(T), in.data(), in.size(), &limits, record.operator->(),
                        &consumed.value, &consumed.fault);
    return consumed;
}

/* Verifies: what decode<T> accepts, without a record. */
template <record_type T>
result<tlvmsg_extent> verify(byte_view in, const tlvmsg_limits &limits = {}) noexcept {
    result<tlvmsg_extent> verified;
    tlvmsg_verify(&traits<T>::type(), in.data(), in.size(), &limits, &verified.value, &verified.fault);
    return verified;
}

/* How many bytes the encoding has. */
template <record_like R>
result<size_t> encoded_size(const R &record) noexcept {
    result<size_t> size{0, {}};
    tlvmsg_sized_size(detail::type_of<R>(), sizeof(detail::record_t<R>), &detail::raw(record), &size.value,
                      &size.fault);
    return size;
}

/*
 * Encodes to the beginning of `out`, and gives that part of it. On failure nothing is written.
 *
 *     std::array<uint8_t, tlvmsg::traits<zel_led_control>::max_encoded> out;      // which is always enough
 *     auto bytes = tlvmsg::encode(led, out);
 */
template <record_like R>
result<std::span<uint8_t>> encode(const R &record, std::span<uint8_t> out) noexcept {
    result<std::span<uint8_t>> encoded;
    size_t written = 0;
    tlvmsg_sized_encode(detail::type_of<R>(), sizeof(detail::record_t<R>), &detail::raw(record), out.data(),
                        out.size(), &written, &encoded.fault);
    encoded.value = out.first(written);
    return encoded;
}

template <record_like R>
result<std::span<std::byte>> encode(const R &record, std::span<std::byte> out) noexcept {
    const auto encoded = encode(record, std::span(reinterpret_cast<uint8_t *>(out.data()), out.size()));
    return {out.first(encoded.value.size()), encoded.fault};
}

/*
 * Encodes to the end of a vector or std::string, and gives what is new there, until `out` changes. In front of that it
 * leaves `room` zero bytes, for the header of a frame. On failure `out` is as it was.
 *
 *     std::vector<uint8_t> out;
 *     if (auto body = tlvmsg::append(message, out, 2)) {
 *         out[0] = uint8_t(body->size() >> 8);
 *         out[1] = uint8_t(body->size());
 *         handle(out.data(), out.size());
 *     }
 */
template <record_like R, class Bytes>
requires detail::byte_range<Bytes> && requires(Bytes &out) { out.resize(out.size()); }
result<std::span<uint8_t>> append(const R &record, Bytes &out, size_t room = 0) {
    const auto size = encoded_size(record);
    if (!size) {
        return {{}, size.fault};
    }
    const size_t before = out.size();
    out.resize(before + room + *size);
    const std::span all(reinterpret_cast<uint8_t *>(out.data()), out.size());
    const auto encoded = encode(record, all.subspan(before + room));
    if (!encoded) {
        out.resize(before);
    }
    return encoded;
}

/* Encodes to a vector, which is empty on failure. */
template <record_like R>
result<std::vector<uint8_t>> encode(const R &record) {
    result<std::vector<uint8_t>> encoded;
    encoded.fault = append(record, encoded.value).fault;
    return encoded;
}

/* An equal record that has blocks of its own. */
template <record_like R>
result<owned<detail::record_t<R>>> copy(const R &record) noexcept {
    using T = detail::record_t<R>;
    result<owned<T>> copied{owned<T>(detail::unset()), {}};
    tlvmsg_sized_copy(detail::type_of<R>(), sizeof(T), copied.value.operator->(), &detail::raw(record),
                      &copied.fault);
    return copied;
}

/* Whether both records are equal; see tlvmsg_equal. */
template <record_like A, record_like B>
requires std::is_same_v<detail::record_t<A>, detail::record_t<B>>
bool equal(const A &a, const B &b) noexcept {
    return tlvmsg_sized_equal(detail::type_of<A>(), sizeof(detail::record_t<A>), &detail::raw(a),
                              &detail::raw(b));
}

/* The same for owners; and for records, which are global, behind `using tlvmsg::operator==;`. */
template <record_like A, record_like B>
requires std::is_same_v<detail::record_t<A>, detail::record_t<B>>
bool operator==(const A &a, const B &b) noexcept { return equal(a, b); }

/* ---- Arrays ---------------------------------------------------------------------------------------------- */

namespace detail {

template <class A>
constexpr bool is_dynamic =
    traits<A>::kind == TLVMSG_DYNAMIC_ELEMENTS || traits<A>::kind == TLVMSG_DYNAMIC_BYTES;

template <class A>
auto *first_of(A &array) noexcept {
    if constexpr (byte_array_type<std::remove_const_t<A>>) {
        return &array.bytes[0];
    } else {
        return &array.items[0];
    }
}

template <class A>
constexpr size_t capacity() noexcept {
    if constexpr (byte_array_type<A>) {
        return std::extent_v<decltype(A::bytes)>;
    } else {
        return std::extent_v<decltype(A::items)>;
    }
}

template <class A>
using item_t = std::remove_cvref_t<decltype(*first_of(std::declval<A &>()))>;

template <class T>
constexpr bool has_blocks = false;
template <record_type T>
constexpr bool has_blocks<T> = traits<T>::holds_blocks;

/* The items of a const array are const, also those behind a pointer. */
template <class A>
auto readable(A &array) noexcept {
    using plain = std::remove_const_t<A>;
    using item = std::conditional_t<std::is_const_v<A>, const item_t<A>, item_t<A>>;
    size_t count = array.count;
    if constexpr (is_dynamic<plain>) {
        count = first_of(array) != nullptr ? count : 0;
    } else {
        count = count < capacity<plain>() ? count : capacity<plain>();
    }
    return std::span<item>(first_of(array), count);
}

} // namespace detail

/*
 * The items, or the bytes, that are really there: never more than the capacity, and none behind a null pointer,
 * whatever the count says. Valid until the array is resized or released; temporary arrays are refused.
 */
template <class A>
requires item_array_type<std::remove_const_t<A>>
auto items(A &array) noexcept { return detail::readable(array); }
template <class A>
void items(const A &&) = delete;

template <class A>
requires byte_array_type<std::remove_const_t<A>>
auto bytes(A &array) noexcept { return detail::readable(array); }
template <class A>
void bytes(const A &&) = delete;

/*
 * The same for loops over the array itself, and for algorithms on ranges. Arrays are global, so the program says outside
 * of any namespace `using tlvmsg::begin, tlvmsg::end;`, and then `for (auto &vlan : bundle.vlan_counters)`.
 */
template <array_type A>
auto begin(A &array) noexcept {
    return detail::readable(array).begin();
}
template <array_type A>
auto begin(const A &array) noexcept {
    return detail::readable(array).begin();
}
template <array_type A>
auto end(A &array) noexcept {
    return detail::readable(array).end();
}
template <array_type A>
auto end(const A &array) noexcept {
    return detail::readable(array).end();
}

/* The bytes as text, of as many characters as there are bytes. */
template <byte_array_type A>
std::string_view text(const A &array) noexcept {
    const auto all = bytes(array);
    return {reinterpret_cast<const char *>(all.data()), all.size()};
}
template <class A>
void text(const A &&) = delete;

/*
 * Makes it an array of `count` items and gives these, the new ones zero; see tlvmsg_resize. On failure the
 * array is as it was.
 */
template <array_type A>
result<std::span<detail::item_t<A>>> resize(A &array, size_t count) noexcept {
    result<std::span<detail::item_t<A>>> resized;
    tlvmsg_sized_resize(&traits<A>::type(), sizeof array, &array, count, &resized.fault);
    resized.value = detail::readable(array);
    return resized;
}

/*
 * Makes it an array of copies of these items, which must not be its own. On failure the array is as it was.
 * Items that have blocks of their own are not assigned but filled, behind resize.
 */
template <item_array_type A>
requires(!detail::has_blocks<detail::item_t<A>>) result<std::span<detail::item_t<A>>> assign(
    A &array, std::type_identity_t<std::span<const detail::item_t<A>>> source)
noexcept {
    auto resized = resize(array, source.size());
    if (resized && !source.empty()) {
        std::memcpy(resized.value.data(), source.data(), source.size_bytes());
    }
    return resized;
}

/* The same for bytes. */
template <byte_array_type A>
result<std::span<uint8_t>> assign(A &array, byte_view source) noexcept {
    auto resized = resize(array, source.size());
    if (resized && source.size() > 0) {
        std::memcpy(resized.value.data(), source.data(), source.size());
    }
    return resized;
}

/* The same for a string literal, or another constant array of char, up to its zero byte. */
template <byte_array_type A, class Literal>
requires detail::is_literal<Literal> result<std::span<uint8_t>> assign(A &array, Literal &literal)
noexcept {
    const std::string_view all(literal, std::size(literal));
    return assign(array, all.substr(0, all.find('\0')));
}

/* ---- Unions and enumerations ----------------------------------------------------------------------------- */

/*
 * What is known about an alternative of a union, by the pointer to its member, alternative<&ip_address_type_union::ipv4>.
 * FAMILY.hpp specializes it.
 *
 *     values         of the selector that choose it
 *     choose         the function tlvmsg_choose_U_A, of typed.h
 */
template <auto Member>
struct alternative;

namespace detail {

template <class T, class Record>
Record holder_of(T Record::*);

/* The record that an alternative is in, or an owner of one. */
template <auto Member>
class holder {
public:
    using record = decltype(holder_of(Member));

    holder(record &there) noexcept : record_(&there) {}
    holder(owned<record> &owner) noexcept : record_(owner.operator->()) {}
    operator record *() const noexcept { return record_; }

private:
    record *record_;
};

template <auto Member>
constexpr bool is_chosen_by(uint32_t value) noexcept {
    for (const uint32_t each : alternative<Member>::values) {
        if (each == value) {
            return true;
        }
    }
    return false;
}

template <auto Member>
constexpr bool has_one_value = std::size(alternative<Member>::values) == 1;

} // namespace detail

/*
 * Makes an alternative what the union holds, and gives it, all zero: the selector is set, and the blocks of what was
 * chosen so far are released, also where that is the same alternative. Where several values of the selector choose it,
 * one of them is named; another one does not compile. typed.h says what is expected of the record.
 *
 *     #include <tlvmsg/cellular.hpp>
 *
 *     ip_address address{};
 *     tlvmsg::choose<&ip_address_type_union::ipv4>(address.address) = 0x0A000001;
 *     tlvmsg::owned<cwan_ipc> ipc;
 *     auto &ping = tlvmsg::choose<&cwan_ipc_type_union::ping_msg, 23>(ipc->body);
 */
template <auto Member, uint32_t... Value>
auto &choose(detail::holder<Member> record) noexcept {
    if constexpr (detail::has_one_value<Member>) {
        static_assert(sizeof...(Value) <= 1 && (detail::is_chosen_by<Member>(Value) && ...),
                      "this value does not choose the alternative");
        return *alternative<Member>::choose(record);
    } else {
        static_assert(sizeof...(Value) == 1, "several values choose the alternative: choose<Member, VALUE>");
        static_assert((detail::is_chosen_by<Member>(Value) && ...),
                      "this value does not choose the alternative");
        return *alternative<Member>::choose(record, Value...);
    }
}

/* The same by a value that only the running program knows. One that does not choose it gives null and changes nothing. */
template <auto Member>
[[nodiscard]] auto *choose(detail::holder<Member> record, uint32_t value) noexcept {
    if constexpr (detail::has_one_value<Member>) {
        return detail::is_chosen_by<Member>(value) ? alternative<Member>::choose(record) : nullptr;
    } else {
        return alternative<Member>::choose(record, value);
    }
}

/*
 * The name of a value of an enumeration, and "" where it has none; for those that visit comes across. By the name of the
 * enumeration there is tlvmsg_name_X, of typed.h.
 */
inline std::string_view name_of(const tlvmsg_type &enumeration, uint64_t value) noexcept {
    const tlvmsg_enumerator *const named = tlvmsg_enumerator_by_value(&enumeration, value);
    return named != nullptr ? named->name : "";
}

/* ---- Members --------------------------------------------------------------------------------------------- */

/*
 * Calls visitor(name, type, member) for each member of a structure, message or union, or of one that is owned, in
 * their order in the record: a std::string_view, a const tlvmsg_type &, and a reference that is const where the record
 * or its owner is. What travels as a count or selector of its own is part of its array or union here. The members of a
 * union are its selector and then the alternative that this chooses, if any.
 *
 * Example:
 *
 *     // The sum of all numbers in a record, and of the sizes of what is bytes.
 *     template <class T>
 *     uint64_t sum_of(const T &value) {
 *         uint64_t sum = 0;
 *         if constexpr (std::is_integral_v<T>) {
 *             sum = static_cast<uint64_t>(value);
 *         } else if constexpr (tlvmsg::byte_array_type<T>) {
 *             sum = tlvmsg::bytes(value).size();
 *         } else if constexpr (tlvmsg::item_array_type<T>) {
 *             for (const auto &item : tlvmsg::items(value)) {
 *                 sum += sum_of(item);
 *             }
 *         } else {
 *             tlvmsg::visit(value, [&](std::string_view, const tlvmsg_type &, const auto &member) {
 *                 sum += sum_of(member);
 *             });
 *         }
 *         return sum;
 *     }
 */
template <class R, class Visitor>
requires record_type<std::remove_const_t<R>> &&
    (!array_type<std::remove_const_t<R>>)void visit(R &record, Visitor &&visitor) {
    traits<std::remove_const_t<R>>::visit(record, visitor);
}

template <class T, class Visitor>
void visit(owned<T> &record, Visitor &&visitor) {
    visit(*record.operator->(), visitor);
}

template <class T, class Visitor>
void visit(const owned<T> &record, Visitor &&visitor) {
    visit(*record, visitor);
}

} // namespace tlvmsg

#endif
