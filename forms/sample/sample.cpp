// Records for samples, filled as the kind and the settings say.
#include "base/element.h"
#include "forms/border/call.h"
#include "forms/record/fields.h"
#include "forms/record/path.h"
#include "forms/sample/setting.h"

#include <tlvmsg/forms/sample.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <new>
#include <random>

namespace tlvmsg::forms {

namespace {

constexpr uint64_t most_encoded_bytes = UINT16_MAX;
constexpr uint64_t small_count = 32;
constexpr uint64_t room_inside = 16; // at least, for each dynamic array in the items of one

// The most bytes that a type needs while its dynamic arrays are empty, and how many of those it may hold.
struct Needs {
    uint64_t bytes;
    uint64_t dynamic_arrays;
};

// Works out each type once, however many others hold it.
class NeedsOfTypes {
public:
    const Needs &of(const tlvmsg_type *type) {
        const auto known = known_.find(type);
        return known != known_.end() ? known->second : known_.emplace(type, worked_out(type)).first->second;
    }

private:
    Needs worked_out(const tlvmsg_type *type) {
        if (tlvmsg_type_is_dynamic(type)) {
            return {type->min_encoded, 1};
        }
        if (type->kind == TLVMSG_ELEMENT_ARRAY) {
            const Needs &item = of(type->element);
            return {type->min_encoded + type->capacity * item.bytes, type->capacity * item.dynamic_arrays};
        }
        if (type->member_count == 0 && type->alternative_count == 0) {
            return {type->max_encoded, 0};
        }
        Needs all{type->kind == TLVMSG_STRUCTURE ? base::header_size : 0, 0};
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const Needs &member = of(type->members[i].type);
            all = {all.bytes + member.bytes, all.dynamic_arrays + member.dynamic_arrays};
        }
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            const Needs &alternative = of(type->alternatives[i].type);
            all = {std::max(all.bytes, alternative.bytes),
                   std::max(all.dynamic_arrays, alternative.dynamic_arrays)};
        }
        return all;
    }

    std::map<const tlvmsg_type *, Needs> known_;
};

class Sampler {
public:
    Sampler(const tlvmsg_type *type, const tlvmsg_sample_options &options, Settings &settings)
        : kind_(options.kind), settings_(settings), random_(options.seed) {
        dynamic_share_ = share_within(type, most_encoded_bytes);
    }

    // What is all zero.
    void fill(const tlvmsg_type *type, void *record) {
        key_ = put_key(type, record);
        fill(type, record, false);
    }

private:
    // A path alone is enough to have an alternative.
    void fill(const tlvmsg_type *type, void *record, bool is_alternative) {
        if (set(type, record, is_alternative)) {
            return;
        }
        switch (shape_of(type)) {
        case Shape::number:
            return record == key_ ? void() : tlvmsg_store(type, record, number(type));
        case Shape::fields:
            return type->kind == TLVMSG_UNION ? fill_union(type, record) : fill_members(type, record);
        case Shape::items:
            return fill_array(type, record);
        }
    }

    // Whether a setting says what it is.
    bool set(const tlvmsg_type *type, void *record, bool is_alternative) {
        const Setting *const setting = settings_.of(path_.text());
        const bool is_said = setting != nullptr && (setting->value || !is_alternative);
        if (is_said) {
            settings_.read(*setting, type, record);
        }
        return is_said;
    }

    // Modulo, because the standard's distributions differ between libraries.
    uint64_t draw(uint64_t below) { return random_() % below; }
    uint64_t one_of(std::initializer_list<uint64_t> values) { return values.begin()[draw(values.size())]; }

    uint64_t share_within(const tlvmsg_type *type, uint64_t bytes) {
        const Needs &rest = needs_.of(type);
        return rest.dynamic_arrays == 0 ? 0 : (bytes - std::min(rest.bytes, bytes)) / rest.dynamic_arrays;
    }

    // As the kind has it: the least, the most, one of those at a boundary, or any.
    template <class Any>
    uint64_t value(uint64_t most, std::initializer_list<uint64_t> boundary, Any any) {
        switch (kind_) {
        case TLVMSG_SAMPLE_MIN:
            return 0;
        case TLVMSG_SAMPLE_MAX:
            return most;
        case TLVMSG_SAMPLE_BOUNDARY:
            return one_of(boundary);
        case TLVMSG_SAMPLE_RANDOM:
            break;
        }
        return any();
    }

    uint64_t number(const tlvmsg_type *type) {
        const auto least = static_cast<uint64_t>(tlvmsg_least(type));
        const uint64_t most = tlvmsg_most(type);
        return value(most, {least, least + 1, 0, 1, most - 1, most},
                     [&] { return random_() >> draw(64); }); // small ones as often as large ones
    }

    uint64_t count(const tlvmsg_type *array) {
        uint64_t most = tlvmsg_most_items(array);
        if (tlvmsg_type_is_dynamic(array)) {
            const Needs item = tlvmsg_type_is_bytes(array) ? Needs{1, 0} : needs_.of(array->element);
            most = std::min(most, dynamic_share_ / (item.bytes + item.dynamic_arrays * room_inside));
        }
        const uint64_t one = std::min<uint64_t>(most, 1);
        return value(most, {0, one, most - one, most}, [&] { return draw(std::min(most, small_count) + 1); });
    }

    // Text and bytes that are no text, and for the boundary the bytes next to where one becomes the other.
    void fill_bytes(uint8_t *first, size_t count) {
        const bool text = draw(2) == 0;
        std::generate_n(first, count, [&] {
            return static_cast<uint8_t>(
                text ? value(UINT8_MAX, {' ', '"', '\\', '~'}, [&] { return 'a' + draw(26); })
                     : value(UINT8_MAX, {0, 0x1f, 0x7f, 0xff}, [&] { return random_(); }));
        });
    }

    void fill_members(const tlvmsg_type *type, void *record) {
        for (tlvmsg_field field{}; tlvmsg_next_field(type, nullptr, &field);) {
            if (field.alternative == nullptr) {
                path_.member(field.name, [&] { fill(field.type, at_offset(record, field.offset), false); });
                if (field.union_type != nullptr) { // in the structure's own record
                    fill_union(field.union_type, record);
                }
            }
        }
    }

    void fill_array(const tlvmsg_type *array, void *record) {
        const uint64_t named = settings_.items(array, path_.text());
        const Setting *const wanted = path_.member("count", [&] { return settings_.of(path_.text()); });
        const uint64_t total =
            wanted != nullptr ? settings_.read_count(*wanted, array) : std::max(count(array), named);
        if (!tlvmsg_resize(array, record, static_cast<size_t>(total), nullptr)) {
            throw std::bad_alloc(); // the count is none that does not fit
        }
        const tlvmsg_items items = tlvmsg_items_of(array, record);
        if (tlvmsg_type_is_bytes(array)) {
            fill_bytes(items.first, static_cast<size_t>(total));
            for (size_t i = 0; i < std::min(named, total); ++i) {
                path_.item(i, [&] { return set(array->element, items.first + i, false); });
            }
        } else {
            fill_items(array, items);
        }
    }

    void fill_items(const tlvmsg_type *array, const tlvmsg_items &items) {
        const uint64_t share = dynamic_share_;
        if (tlvmsg_type_is_dynamic(array) && items.count > 0) {
            dynamic_share_ = share_within(array->element, share / items.count);
        }
        for (size_t i = 0; i < items.count; ++i) {
            path_.item(i, [&] { fill(array->element, item_at(array, items, i), false); });
        }
        dynamic_share_ = share;
    }

    void fill_union(const tlvmsg_type *type, void *record) {
        void *const selector = at_offset(record, type->selector_offset);
        const bool is_set =
            path_.member(type->selector_name, [&] { return set(type->selector, selector, false); });
        if (const std::optional<uint32_t> value = is_set ? std::nullopt : choice(type)) {
            tlvmsg_store(type->selector, selector, *value);
        }
        if (const tlvmsg_alternative *const chosen = tlvmsg_chosen_in(type, record)) {
            path_.member(chosen->name, [&] { fill(chosen->type, at_offset(record, chosen->offset), true); });
        }
    }

    // Every value that chooses something is as likely as the next.
    std::optional<uint32_t> choice(const tlvmsg_type *type) {
        if (const tlvmsg_alternative *const named = settings_.alternative(type, path_.text())) {
            return named->values[0];
        }
        std::vector<uint32_t> values;
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            const tlvmsg_alternative &each = type->alternatives[i];
            values.insert(values.end(), each.values, each.values + each.value_count);
        }
        const bool any = kind_ != TLVMSG_SAMPLE_MIN && !values.empty();
        return any ? std::optional(values[static_cast<size_t>(draw(values.size()))]) : std::nullopt;
    }

    const tlvmsg_sample_kind kind_;
    Settings &settings_;
    std::mt19937_64 random_;
    NeedsOfTypes needs_;
    uint64_t dynamic_share_;    // bytes for the items of each dynamic array
    const void *key_ = nullptr; // the field that has the message's key already
    Path path_;                 // of what is filled
};

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_sample(const tlvmsg_type *type, const tlvmsg_sample_options *options, void *record,
                   tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    const tlvmsg_sample_options wanted = options != nullptr ? *options : tlvmsg_sample_options{};
    std::string text; // a line each
    const auto join = [&] {
        for (size_t i = 0; i < wanted.setting_count; ++i) {
            if (wanted.settings[i] == nullptr) {
                throw TextFault{TLVMSG_TEXT_NULL_ARGUMENT, 0, "settings", "a null pointer was passed"};
            }
            text += std::string(wanted.settings[i]) + '\n';
        }
    };
    const auto fill = [&] {
        Settings settings(text);
        Sampler(type, wanted, settings).fill(type, record);
        settings.check();
    };
    Call call(fault);
    call.fills(type, record)
        .takes("options", options)
        .reads("settings", wanted.settings, wanted.setting_count);
    return call.run(join) && call.run(fill, text);
}
