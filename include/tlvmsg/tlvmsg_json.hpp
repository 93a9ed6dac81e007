/*
 * tlvmsg_json.hpp - records as JSON and back, in C++20.
 *
 * Example:
 *
 *     auto led = tlvmsg::from_json<zel_led_control>(R"({"slot": 2, "port": 5, "color": 3})");
 *     if (led) {
 *         std::cout << *tlvmsg::to_json(*led) << '\n'; // {"slot":2,"port":5,"color":3}
 *     }
 *     auto misspelt = tlvmsg::from_json<zel_led_control>(R"({"slot": 2, "colour": 3})");
 *     if (!misspelt) {
 *         // error[unknown-name]: $: no member "colour", did you mean 'color'? in line 1, column 13
 *         std::cerr << misspelt.fault.text() << '\n';
 *     }
 *
 *     auto bytes = tlvmsg::bytes_from_json<zel_led_control>(R"({"slot": 2, "color": 3})");
 *     if (bytes) {
 *         std::cout << *tlvmsg::bytes_to_json<zel_led_control>(*bytes) << '\n'; // {"slot":2,"port":0,"color":3}
 *     }
 *
 * What the JSON looks like, and what is promised of any text, is said in forms/json.h. Programs link
 * tlvmsg_forms.
 */
#ifndef TLVMSG_TLVMSG_JSON_HPP
#define TLVMSG_TLVMSG_JSON_HPP

#include <tlvmsg/forms/bytes.h>
#include <tlvmsg/forms/json.h>
#include <tlvmsg/tlvmsg.hpp>

#include <memory>
#include <string>
#include <vector>

namespace tlvmsg {

/* Why a text was refused, or could not be made. */
struct text_fault : tlvmsg_text_fault {
    text_fault() noexcept : tlvmsg_text_fault() {}

    std::string_view name() const noexcept { return tlvmsg_text_code_name(code); } /* "unknown-name" */

    /* "error[unknown-name]: $: no member "colour", did you mean 'color'? in line 1, column 13"; or "no fault" */
    std::string text() const {
        if (code == TLVMSG_TEXT_OK) {
            return "no fault";
        }
        std::string all = "error[" + std::string(name()) + "]: ";
        all.append(path).append(path[0] != '\0' ? ": " : "").append(message);
        return has_place() ? all + " in line " + std::to_string(line) + ", column " + std::to_string(column)
                           : all;
    }

private:
    /* Whether it is about a text, and not about the call. */
    bool has_place() const noexcept {
        return line > 0 && code != TLVMSG_TEXT_OUT_OF_MEMORY && code != TLVMSG_TEXT_NULL_ARGUMENT &&
               code != TLVMSG_TEXT_RECORD_SIZE && code != TLVMSG_TEXT_RESERVED_WORD;
    }
};

/* So that tlvmsg_format.hpp prints it. */
inline std::string to_string(const text_fault &fault) { return fault.text(); }

namespace detail {

/* Whether the program's record is the library's. */
template <record_type T>
bool fits(text_fault &fault) noexcept {
    tlvmsg_fault why;
    if (traits<T>::type().size == sizeof(T)) {
        return true;
    }
    tlvmsg_refuse_record(&traits<T>::type(), sizeof(T), nullptr, &why);
    fault.code = TLVMSG_TEXT_RECORD_SIZE;
    fault.line = fault.column = 1;
    fault.path[0] = '$';
    tlvmsg_fault_message(&why, fault.message, sizeof fault.message);
    return false;
}

/* The text that `make` makes, or why there is none. */
template <class Fault = text_fault, class Make>
result<std::string, Fault> text_of(Make make) {
    result<std::string, Fault> made;
    char *text = nullptr;
    size_t length = 0;
    if (make(&text, &length, &made.fault)) {
        const std::unique_ptr<char, void (*)(void *)> block(text, tlvmsg_free); /* also when assign throws */
        made.value.assign(text, length);
    }
    return made;
}

} // namespace detail

template <record_like R>
result<std::string, text_fault> to_json(const R &record, const tlvmsg_json_options &options = {}) {
    result<std::string, text_fault> unfit;
    if (!detail::fits<detail::record_t<R>>(unfit.fault)) {
        return unfit;
    }
    return detail::text_of([&](char **text, size_t *length, text_fault *fault) {
        return tlvmsg_to_json(detail::type_of<R>(), &detail::raw(record), &options, text, length, fault);
    });
}

template <record_type T>
result<owned<T>, text_fault> from_json(std::string_view text, const tlvmsg_limits &limits = {}) noexcept {
    result<owned<T>, text_fault> read;
    if (detail::fits<T>(read.fault)) {
        tlvmsg_from_json(&traits<T>::type(), text.data(), text.size(), &limits, read.value.operator->(),
                         &read.fault);
    }
    return read;
}

/* ---- Without a record in between, as forms/bytes.h says --------------------------------------------------- */

/* Encoded bytes as JSON; `*consumed` becomes the end of what was decoded, 0 on failure. */
template <record_type T>
result<std::string> bytes_to_json(byte_view in, const tlvmsg_limits &limits = {},
                                  const tlvmsg_json_options &options = {}, size_t *consumed = nullptr) {
    return detail::text_of<fault>([&](char **text, size_t *length, tlvmsg_fault *fault) {
        return tlvmsg_bytes_to_json(&traits<T>::type(), in.data(), in.size(), &limits, &options, text, length,
                                    consumed, fault);
    });
}

/* JSON as encoded bytes. */
template <record_type T>
result<std::vector<uint8_t>, text_fault> bytes_from_json(std::string_view text,
                                                         const tlvmsg_limits &limits = {}) {
    result<std::vector<uint8_t>, text_fault> made;
    uint8_t *bytes = nullptr;
    size_t size = 0;
    if (tlvmsg_bytes_from_json(&traits<T>::type(), text.data(), text.size(), &limits, &bytes, &size,
                               &made.fault)) {
        const std::unique_ptr<uint8_t, void (*)(void *)> block(bytes, tlvmsg_free);
        made.value.assign(bytes, bytes + size);
    }
    return made;
}

} // namespace tlvmsg

#endif
