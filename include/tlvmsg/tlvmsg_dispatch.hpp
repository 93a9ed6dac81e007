/*
 * tlvmsg_dispatch.hpp - from bytes to the function that takes the message, and from a descriptor to a type, for C++20.
 *
 * What dispatch.h does for C, with functions of any kind. Programs include <tlvmsg/FAMILY.hpp> beside it.
 *
 * Example:
 *
 *     tlvmsg::dispatcher<std::string_view> dispatcher;
 *     dispatcher
 *         .on<analogbri_led_control_req_message>(17, [](const analogbri_led_control_req_message &request,
 *                                                       std::string_view peer) {
 *             std::cout << "colour " << request.led_control.color << " of " << peer << '\n'; // colour 3 of module 2
 *         })
 *         .refused([](const tlvmsg::fault &fault, const tlvmsg_arrival &, std::string_view) {
 *             log_error(fault.text()); // error[truncated]: ...led_control: needs 28 bytes, 27 are left at byte 92
 *         });
 *
 *     if (const auto key = tlvmsg::session_key(packet)) {
 *         dispatcher.dispatch(*key, packet, "module 2");
 *     }
 */
#ifndef TLVMSG_TLVMSG_DISPATCH_HPP
#define TLVMSG_TLVMSG_DISPATCH_HPP

#include <tlvmsg/dispatch.h>
#include <tlvmsg/tlvmsg.hpp>

#include <optional>
#include <utility>

namespace tlvmsg {

/* The message type of the session header with which the bytes begin, if they do; see tlvmsg_session_key. */
inline std::optional<uint32_t> session_key(byte_view bytes) noexcept {
    uint32_t key;
    return tlvmsg_session_key(bytes.data(), bytes.size(), &key) ? std::optional(key) : std::nullopt;
}

/* A message to which the schema gives a key. */
template <class T>
concept keyed_message = record_type<T> && requires {
    traits<T>::key;
};

/* ---- Messages to functions ------------------------------------------------------------------------------- */

namespace detail {

/* What the function gives, and true where that is nothing. */
template <class F, class... Arguments>
bool succeeds(F &f, Arguments &&...arguments) {
    if constexpr (std::is_void_v<std::invoke_result_t<F &, Arguments...>>) {
        f(std::forward<Arguments>(arguments)...);
        return true;
    } else {
        return f(std::forward<Arguments>(arguments)...);
    }
}

/* A function object of any type, or none. <memory> and <functional> take a compiler longer than the rest of this. */
template <class... Arguments>
class function {
public:
    function() = default;
    template <class F>
    explicit function(F f) : body_(new body_of<F>(std::move(f))) {}
    function(function &&other) noexcept : body_(std::exchange(other.body_, nullptr)) {}
    function &operator=(function &&other) noexcept {
        std::swap(body_, other.body_);
        return *this;
    }
    ~function() { delete body_; }

    explicit operator bool() const { return body_ != nullptr; }
    bool operator()(Arguments... arguments) const {
        return body_->call(std::forward<Arguments>(arguments)...);
    }

private:
    struct body {
        virtual ~body() = default;
        virtual bool call(Arguments... arguments) = 0;
    };

    template <class F>
    struct body_of final : body {
        explicit body_of(F &&f) : f_(std::move(f)) {}
        bool call(Arguments... arguments) override {
            return succeeds(f_, std::forward<Arguments>(arguments)...);
        }
        F f_;
    };

    body *body_ = nullptr;
};

} // namespace detail

/*
 * Hands messages to the functions for their keys, with whatever Context... the caller adds. `f` of a message T takes a
 * `const T &`, which lasts until it returns, or an `owned<T> &&`, to keep what it likes, and the context; functions
 * return bool, which becomes the result of `dispatch`, or nothing, which is true.
 *
 * Functions are kept, and memory for them is taken from where that of vectors comes, in `on`, `unknown` and `refused`;
 * `dispatch` allocates the message's blocks and nothing else: its record lies on the stack. It may be called by several
 * threads and by functions that it calls, if the functions allow that, but not while another function is put in. One
 * that throws ends the program.
 */
template <class... Context>
class dispatcher {
public:
    dispatcher() = default;
    explicit dispatcher(const tlvmsg_limits &limits) : limits_(limits) {}

    /* `f` takes messages T of this key, in place of what took them before. */
    template <record_type T, class F>
    dispatcher &on(uint64_t key, F f) {
        receiver receive([f = std::move(f)](const dispatcher &self, const tlvmsg_arrival &arrival,
                                            Context... context) mutable {
            return self.template decode_for<T>(f, arrival, std::forward<Context>(context)...);
        });
        const size_t place = place_of(key);
        if (place < routes_.size() && routes_[place].key == key) {
            routes_[place].receive = std::move(receive);
        } else {
            routes_.insert(routes_.begin() + static_cast<std::ptrdiff_t>(place),
                           route{key, std::move(receive)});
        }
        return *this;
    }

    /* The same for the key that the schema gives to T. */
    template <keyed_message T, class F>
    dispatcher &on(F f) {
        return on<T>(traits<T>::key, std::move(f));
    }

    /* `f`, of a `const tlvmsg_arrival &` and the context, takes what has a key of no function. */
    template <class F>
    dispatcher &unknown(F f) {
        unknown_ = decltype(unknown_)(std::move(f));
        return *this;
    }

    /* `f`, of a `const fault &`, a `const tlvmsg_arrival &` and the context, takes what cannot be decoded. */
    template <class F>
    dispatcher &refused(F f) {
        refused_ = decltype(refused_)(std::move(f));
        return *this;
    }

    /* Decodes the bytes, calls one of the functions, and gives its result; false where there is none. */
    bool dispatch(uint64_t key, byte_view bytes, Context... context) const noexcept {
        const tlvmsg_arrival arrival{key, bytes.data(), bytes.size(), nullptr};
        const size_t place = place_of(key);
        if (place < routes_.size() && routes_[place].key == key) {
            return routes_[place].receive(*this, arrival, std::forward<Context>(context)...);
        }
        return unknown_ && unknown_(arrival, std::forward<Context>(context)...);
    }

private:
    using receiver = detail::function<const dispatcher &, const tlvmsg_arrival &, Context...>;

    struct route {
        uint64_t key;
        receiver receive;
    };

    template <class T, class F>
    bool decode_for(F &f, tlvmsg_arrival arrival, Context... context) const {
        arrival.type = &traits<T>::type();
        auto record = decode<T>(std::span(arrival.bytes, arrival.size), limits_);
        if (!record) {
            return refused_ && refused_(record.fault, arrival, std::forward<Context>(context)...);
        }
        if constexpr (std::is_invocable_v<F &, const T &, Context...>) {
            return detail::succeeds(f, *std::as_const(record.value), std::forward<Context>(context)...);
        } else {
            return detail::succeeds(f, std::move(record.value), std::forward<Context>(context)...);
        }
    }

    size_t place_of(uint64_t key) const noexcept {
        size_t first = 0;
        for (size_t last = routes_.size(); first < last;) {
            const size_t middle = first + (last - first) / 2;
            if (routes_[middle].key < key) {
                first = middle + 1;
            } else {
                last = middle;
            }
        }
        return first;
    }

    tlvmsg_limits limits_{};
    std::vector<route> routes_; // by key
    detail::function<const tlvmsg_arrival &, Context...> unknown_;
    detail::function<const fault &, const tlvmsg_arrival &, Context...> refused_;
};

/* ---- Descriptors to types -------------------------------------------------------------------------------- */

namespace detail {

template <class T, class F>
bool visit_if(const tlvmsg_type &type, F &f) {
    const bool is = &traits<T>::type() == &type;
    if (is) {
        f(std::type_identity<T>());
    }
    return is;
}

template <class... T, class F>
bool visit_one(type_list<T...>, const tlvmsg_type &type, F &f) {
    bool found = false;
    const bool until[] = {true, (found = found || visit_if<T>(type, f))...};
    return static_cast<void>(until), found;
}

} // namespace detail

/*
 * Calls f(std::type_identity<T>()) for the record T of that descriptor, and gives true, if the lists have it; otherwise
 * false. Types that a program has loaded from a schema are in no list, whatever they are called. `f` is compiled for each
 * type of the lists.
 *
 * Example:
 *
 *     const tlvmsg_type &type = *tlvmsg_type_find("analogbri_led_control_req_message");
 *     tlvmsg::visit_type<tlvmsg::messages_of_voice, tlvmsg::types_of_common>(type, [&](auto known) {
 *         using T = typename decltype(known)::type;
 *         std::cout << (tlvmsg::verify<T>(packet) ? "good\n" : "bad\n"); // good
 *     });
 */
template <class... Lists, class F>
bool visit_type(const tlvmsg_type &type, F &&f) {
    return (detail::visit_one(Lists(), type, f) || ...);
}

} // namespace tlvmsg

#endif
