#include "reference.h"

#include "support/record.h"

namespace tlvmsg_test {

namespace {

class Writer {
public:
    void value(const tlvmsg_type &type, const uint8_t *record) {
        switch (type.kind) {
        case TLVMSG_SCALAR:
            return scalar(type.tag, load_number(record, type.size), type.size);
        case TLVMSG_ENUMERATION:
            return element(type.tag, [&] { scalar(uint32_tag, load_number(record, 4), 4); });
        case TLVMSG_STRUCTURE:
            return element(type.tag, [&] { members(type, record); });
        case TLVMSG_MESSAGE:
            return members(type, record);
        case TLVMSG_UNION:
            if (const tlvmsg_alternative *chosen = chosen_alternative(type, record)) {
                value(*chosen->type, record + chosen->offset);
            }
            return;
        default:
            return element(type.tag, [&] { array(type, record); });
        }
    }

    std::vector<uint8_t> bytes;

private:
    static constexpr uint16_t uint16_tag = 4;
    static constexpr uint16_t uint32_tag = 6;

    void number(uint64_t value, uint32_t width) {
        for (uint32_t i = width; i-- > 0;) {
            bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
        }
    }

    template <class Content>
    void element(uint16_t tag, const Content &content) {
        number(tag, 2);
        const size_t length_at = bytes.size();
        number(0, 2);
        content();
        const size_t length = bytes.size() - length_at - 2;
        bytes[length_at] = static_cast<uint8_t>(length >> 8);
        bytes[length_at + 1] = static_cast<uint8_t>(length);
    }

    void scalar(uint16_t tag, uint64_t value, uint32_t width) {
        element(tag, [&] { number(value, width); });
    }

    void members(const tlvmsg_type &type, const uint8_t *record) {
        for (uint32_t i = 0; i < type.member_count; ++i) {
            value(*type.members[i].type, record + type.members[i].offset);
        }
    }

    void array(const tlvmsg_type &type, const uint8_t *record) {
        const uint64_t count = load_number(record, type.count_width);
        scalar(uint16_tag, count, 2);
        const uint8_t *items = record + type.items_offset;
        if (type.kind == TLVMSG_DYNAMIC_ELEMENTS) {
            items = load_pointer(items);
        }
        // The items of a dynamic byte array are the record's own bytes, pointer first.
        for (uint64_t i = 0; i < count; ++i) {
            item(type, items + i * type.element->size);
        }
        const bool terminated =
            type.kind == TLVMSG_DYNAMIC_BYTES || (type.kind == TLVMSG_BYTE_ARRAY && count < type.capacity);
        if (terminated) {
            number(0, 1);
        }
    }

    void item(const tlvmsg_type &array, const uint8_t *at) {
        const bool whole_elements =
            array.kind == TLVMSG_ELEMENT_ARRAY || array.kind == TLVMSG_DYNAMIC_ELEMENTS;
        if (whole_elements) {
            value(*array.element, at);
        } else {
            number(load_number(at, array.element->size), array.element->size);
        }
    }
};

} // namespace

std::vector<uint8_t> reference_encoding(const tlvmsg_type &type, const uint8_t *record) {
    Writer writer;
    writer.value(type, record);
    return writer.bytes;
}

} // namespace tlvmsg_test
