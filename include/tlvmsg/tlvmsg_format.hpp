/*
 * tlvmsg_format.hpp - faults and records as text, for logs and debuggers.
 *
 * Example:
 *
 *     auto request = tlvmsg::decode<zel_led_control>(packet);
 *     if (request) {
 *         std::cout << *request << '\n'; // zel_led_control{slot: 2, port: 5, color: 3}
 *     } else {
 *         // error[truncated]: zel_led_control: needs 28 bytes, 27 are left at byte 0
 *         std::cerr << request.fault << '\n';
 *     }
 *
 * fmt::print and std::print print the same, where the compiler finds <fmt/format.h> or its library has <format>, which
 * may be included before or behind this header. They take records and owners as they are, arrays by tlvmsg::show(array).
 * Streams take owners, and records by tlvmsg::show(record); or as they are, since records are global, behind
 * `using tlvmsg::operator<<;`.
 *
 * Enumerations come by name, where the value has one; bytes in quotes, where what is not printable ASCII is \x and two
 * hexadecimal digits, and a \ stands before a quote and before itself; unions with their selector and what that chooses.
 * The text is for people and may change; JSON is in tlvmsg_json.hpp.
 */
#ifndef TLVMSG_TLVMSG_FORMAT_HPP
#define TLVMSG_TLVMSG_FORMAT_HPP

#include <tlvmsg/tlvmsg.hpp>

#include <ostream>
#include <string>

#if __has_include(<fmt/format.h>)
#include <fmt/format.h>
#endif
#ifdef __cpp_lib_format
#include <format>
#endif

namespace tlvmsg {

/* Refers to a record that is to be printed. Temporary records are refused. */
struct shown {
    const tlvmsg_type &type;
    const void *record;
};

template <record_like R>
shown show(const R &record) noexcept {
    return {traits<detail::record_t<R>>::type(), &detail::raw(record)};
}
template <class R>
void show(const R &&) = delete;

namespace detail {

class printer {
public:
    void print(const tlvmsg_type &type, const void *record) {
        switch (type.kind) {
        case TLVMSG_SCALAR:
        case TLVMSG_ENUMERATION:
            return number(type, tlvmsg_load(&type, record));
        case TLVMSG_STRUCTURE:
        case TLVMSG_MESSAGE:
        case TLVMSG_UNION:
            return fields(type, record);
        default:
            return tlvmsg_type_is_bytes(&type) ? quoted(tlvmsg_items_of(&type, record))
                                               : items(*type.element, tlvmsg_items_of(&type, record));
        }
    }

    std::string text_;

private:
    void separate() {
        const char last = text_.back();
        text_ += last == '{' || last == '[' ? "" : ", ";
    }

    void number(const tlvmsg_type &type, uint64_t value) {
        const std::string_view name = name_of(type, value);
        text_ += !name.empty()                  ? std::string(name)
                 : tlvmsg_type_is_signed(&type) ? std::to_string(static_cast<int64_t>(value))
                                                : std::to_string(value);
    }

    void fields(const tlvmsg_type &type, const void *record) {
        text_ += '{';
        for (tlvmsg_field field{}; tlvmsg_next_field(&type, record, &field);) {
            separate();
            text_.append(field.name).append(": ");
            print(*field.type, static_cast<const char *>(record) + field.offset);
        }
        text_ += '}';
    }

    void items(const tlvmsg_type &item, const tlvmsg_items &there) {
        text_ += '[';
        for (size_t i = 0; i < there.readable; ++i) {
            separate();
            print(item, there.first + i * item.size);
        }
        text_ += ']';
    }

    void quoted(const tlvmsg_items &there) {
        static constexpr char digits[] = "0123456789abcdef";
        text_ += '"';
        for (size_t i = 0; i < there.readable; ++i) {
            const uint8_t byte = there.first[i];
            if (byte < ' ' || byte > '~') {
                text_ += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
            } else {
                text_ += byte == '"' || byte == '\\' ? "\\" : "";
                text_ += static_cast<char>(byte);
            }
        }
        text_ += '"';
    }
};

} // namespace detail

inline std::string to_string(const shown &shown) {
    detail::printer printer;
    printer.text_ = shown.type.name;
    printer.print(shown.type, shown.record);
    return std::move(printer.text_);
}

template <record_like R>
std::string to_string(const R &record) {
    return to_string(show(record));
}

inline std::string to_string(const line &line) { return line.c_str(); }
inline std::string to_string(const fault &fault) { return fault.text().c_str(); }

struct text_fault;
inline std::string to_string(const text_fault &fault); /* in tlvmsg_json.hpp */

template <class T>
concept printable = requires(const T &value) {
    tlvmsg::to_string(value);
};

template <printable T>
requires(!std::is_same_v<T, line>) // which brings its own
    std::ostream &
    operator<<(std::ostream &out, const T &value) {
    return out << to_string(value);
}

} // namespace tlvmsg

namespace tlvmsg::detail {

/* An array may be a range, of which there are formatters already. */
template <class T>
concept formattable = printable<T> && !array_type<T>;

} // namespace tlvmsg::detail

#ifdef FMT_VERSION
template <tlvmsg::detail::formattable T>
struct fmt::formatter<T> : fmt::formatter<fmt::string_view> {
    template <class Context>
    auto format(const T &value, Context &context) const {
        return fmt::formatter<fmt::string_view>::format(tlvmsg::to_string(value), context);
    }
};
#endif

#ifdef __cpp_lib_format
template <tlvmsg::detail::formattable T>
struct std::formatter<T> : std::formatter<std::string_view> {
    template <class Context>
    auto format(const T &value, Context &context) const {
        return std::formatter<std::string_view>::format(tlvmsg::to_string(value), context);
    }
};
#endif

#endif
