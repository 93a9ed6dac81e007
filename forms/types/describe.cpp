// Descriptors as JSON, under the keys that the schema compiler writes in compiler/emit/describe.cpp.
#include "base/json.h"
#include "forms/json/writer.h"
#include "forms/record/fields.h"

#include <tlvmsg/forms/describe.h>
#include <tlvmsg/record.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <utility>

namespace tlvmsg::forms {

namespace {

struct AlignedNumber {
    uint64_t number;
};

// This machine's layout.
constexpr const char *layout_name = sizeof(void *) == 8           ? "LP64"
                                    : alignof(AlignedNumber) == 8 ? "ILP32"
                                                                  : "i386";

class TypeWriter : public JsonWriter {
public:
    using JsonWriter::JsonWriter;

    void type(const tlvmsg_type *type) {
        open('{');
        string("name", type->name);
        string("family", type->family);
        string("section", type->section);
        string("doc", type->doc);
        string("kind", tlvmsg_kind_name(type->kind));
        if (type->tag != 0) {
            value("tag", type->tag);
        }
        if ((type->flags & TLVMSG_HAS_KEY) != 0) {
            value("key", type->key);
        }
        value("min_encoded", type->min_encoded);
        value("max_encoded", type->max_encoded);
        if (const uint64_t fingerprint = tlvmsg_fingerprint(type); fingerprint != 0) {
            string("fingerprint", fmt::format("0x{:016X}", fingerprint));
        }
        particulars(type);
        layouts(type);
        close('}');
    }

private:
    template <class Value>
    void value(std::string_view name, Value value) {
        key(name);
        text += fmt::format("{}", value);
    }

    void string(std::string_view name, std::string_view value) {
        key(name);
        text += base::json_text(nlohmann::json(value));
    }

    template <class Write>
    void object(std::string_view name, Write write) {
        key(name);
        open('{');
        write();
        close('}');
    }

    template <class Item, class Write>
    void list(std::string_view name, const Item *items, uint32_t count, Write write) {
        key(name);
        open('[');
        for (uint32_t i = 0; i < count; ++i) {
            next();
            write(items[i]);
        }
        close(']');
    }

    template <class Item, class Write>
    void objects(std::string_view name, const Item *items, uint32_t count, Write write) {
        list(name, items, count, [&](const Item &each) {
            open('{');
            write(each);
            close('}');
        });
    }

    void particulars(const tlvmsg_type *type) {
        switch (shape_of(type)) {
        case Shape::number:
            return type->kind == TLVMSG_SCALAR ? value("signed", tlvmsg_type_is_signed(type))
                                               : enumerators(type);
        case Shape::fields:
            return type->kind == TLVMSG_UNION ? alternatives(type) : members(type);
        case Shape::items:
            return array(type);
        }
    }

    void enumerators(const tlvmsg_type *type) {
        objects("enumerators", type->enumerators, type->enumerator_count, [&](const auto &each) {
            string("name", each.name);
            string("doc", each.doc);
            value("value", each.value);
        });
    }

    void members(const tlvmsg_type *type) {
        objects("members", type->members, type->member_count, [&](const auto &each) {
            string("path", each.path);
            string("doc", each.doc);
            string("type", each.type->name);
            flags(each.flags);
        });
    }

    void array(const tlvmsg_type *type) {
        string("element", type->element->name);
        if (!tlvmsg_type_is_dynamic(type)) {
            value("capacity", type->capacity);
        }
        if (type->kind == TLVMSG_ELEMENT_ARRAY || type->kind == TLVMSG_PACKED_ARRAY) {
            value("packed", type->kind == TLVMSG_PACKED_ARRAY);
        }
        value("count_width", type->count_width);
    }

    void alternatives(const tlvmsg_type *type) {
        string("selector", type->selector->name);
        string("selector_name", type->selector_name);
        objects("alternatives", type->alternatives, type->alternative_count, [&](const auto &each) {
            string("name", each.name);
            list("values", each.values, each.value_count,
                 [&](uint32_t chosen_by) { text += std::to_string(chosen_by); });
            string("type", each.type->name);
            flags(each.flags);
        });
    }

    void flags(uint32_t flags) {
        static constexpr std::pair<uint32_t, std::string_view> words[] = {
            {TLVMSG_SHARED_WITH_NEXT, "shared_with_next"},
            {TLVMSG_ZERO_COUNT, "zero_count"},
            {TLVMSG_END_BY_LENGTH, "end_by_length"}};
        key("flags");
        open('[');
        for (const auto &[flag, word] : words) {
            if ((flags & flag) != 0) {
                next();
                text += fmt::format("\"{}\"", word);
            }
        }
        close(']');
    }

    void layouts(const tlvmsg_type *type) {
        object("layouts", [&] {
            object(layout_name, [&] {
                value("size", type->size);
                value("alignment", type->alignment);
                if (shape_of(type) != Shape::number) {
                    object("offsets", [&] { offsets(type); });
                }
            });
        });
    }

    void offsets(const tlvmsg_type *type) {
        for (uint32_t i = 0; i < type->member_count; ++i) {
            if (*type->members[i].path != '\0') {
                value(type->members[i].path, type->members[i].offset);
            }
        }
        if (type->selector != nullptr) {
            value(type->selector_name, type->selector_offset);
        }
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            value(type->alternatives[i].name, type->alternatives[i].offset);
        }
        if (type->element != nullptr) {
            value("count", 0);
            value(tlvmsg_type_is_bytes(type) ? "bytes" : "items", type->items_offset);
        }
    }
};

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_type_to_json(const tlvmsg_type *type, const tlvmsg_json_options *options, char **text,
                         size_t *length, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    return hand_out_json<TypeWriter>(Call(fault).needs("type", type), options, text, length,
                                     [&](TypeWriter &writer) { writer.type(type); });
}

bool tlvmsg_types_to_json(const tlvmsg_type_set *set, const tlvmsg_json_options *options, char **text,
                          size_t *length, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    return hand_out_json<TypeWriter>(call, options, text, length, [&](TypeWriter &writer) {
        writer.open('[');
        for (size_t i = 0; const tlvmsg_type *const type = tlvmsg_type_set_at(set, i); ++i) {
            writer.next();
            writer.type(type);
        }
        writer.close(']');
    });
}
