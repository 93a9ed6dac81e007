// Elements of one type, one behind the other: the items of arrays, and runs of members.
#pragma once

#include "array.h"
#include "header_map.h"

namespace tlvmsg::rules {

// Each type of element has one body, whoever uses it; arrays another one, which compares by a map.
template <class Item>
struct Elements {
    using record = typename Item::record;

    template <Library For>
    static uint64_t measure(const record *items, uint16_t count) {
        if constexpr (fixed_size<Item> != 0) {
            return uint64_t{count} * fixed_size<Item>;
        } else {
            uint64_t sum = 0;
            for (uint32_t i = 0; i < count; ++i) {
                sum += Item::template measure<For>(items + i);
            }
            return sum;
        }
    }

    template <Library For>
    [[gnu::noinline]] static uint8_t *encode(const record *items, uint16_t count, uint8_t *out) {
        for (uint32_t i = 0; i < count && out != nullptr; ++i) {
            if constexpr (fixed_size<Item> != 0) {
                Item::put(items + i, out);
                out += fixed_size<Item>;
            } else {
                out = rules::encode<Item, For>(items + i, out);
            }
        }
        return out;
    }

    [[gnu::noinline]] static const uint8_t *decode(const uint8_t *in, uint16_t count, record *items) {
        for (uint32_t i = 0; i < count && in != nullptr; ++i) {
            if constexpr (is_mapped<Item> && fixed_size<Item> != 0) {
                // A loop without calls, so that the map stays in registers.
                for (; Item::covers(in) && Item::mismatch(in) == 0; in += fixed_size<Item>) {
                    Item::take(in, items + i);
                    if (++i == count) {
                        return in + fixed_size<Item>;
                    }
                }
                in = Item::decode(in, items + i);
            } else {
                in = rules::decode<Item>(in, items + i);
            }
        }
        return in;
    }

    template <class Out>
    [[gnu::noinline]] static const uint8_t *accept(const uint8_t *in, uint16_t count, Input &input,
                                                   Out items) {
        if constexpr (always_presumed<Item>) {
            Within bounds;
            const bool there = input.left(in) >= size_t{count} * fixed_size<Item>;
            return there ? accept_each(in, count, bounds, items) : nullptr;
        } else {
            return accept_each(in, count, input, items);
        }
    }

private:
    template <class Bounds, class Out>
    [[gnu::always_inline]] static const uint8_t *accept_each(const uint8_t *in, uint16_t count,
                                                             Bounds &bounds, Out items) {
        for (uint32_t i = 0; i < count && in != nullptr; ++i) {
            in = rules::accept<Item>(in, bounds, item(items, i));
        }
        return in;
    }
};

// As arrays have them.
template <class Item>
using Items =
    Elements<std::conditional_t<fast_paths && presumed_size<Item> >= sizeof(Words), Mapped<Item>, Item>>;

} // namespace tlvmsg::rules
