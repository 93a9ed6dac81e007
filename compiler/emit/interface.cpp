// interface.txt: what the schema promises to programs and peers, a line a type, a field and an enumerator, to
// be reviewed when it changes. The schema says the same, but not where C puts a field.
#include "compiler/emit/emit.h"
#include "compiler/model/attributes.h"
#include "compiler/model/fingerprint.h"
#include "compiler/model/layout.h"

#include <fmt/format.h>

namespace tlvc {

namespace {

class Interface {
public:
    std::string text =
        "# What peers and programs rely on: kinds, tags, members, values, encoded sizes, records in memory, "
        "and\n"
        "# fingerprints of what lies on the wire. 'tlvc interface' wrote it, and 'tlvc compare' reads it. "
        "Columns of\n"
        "# a field: its offset, and its type and name. An offset or size holds where pointers have 8 bytes; "
        "behind\n"
        "# slashes, where they have 4, and where numbers are then aligned to 4 at most, when that differs.\n";

    void add(const Family &family) {
        text += fmt::format("\nfamily {}\n", family.name);
        if (!family.reserved.empty()) {
            text += fmt::format("\nreserved {}\n", spelled(family.reserved));
        }
        for (const Type *type : family.types) {
            add(*type);
        }
    }

private:
    void add(const Type &type) {
        const std::string encoded = type.fixed_size()
                                        ? fmt::format("{} bytes", type.min_size)
                                        : fmt::format("{} to {} bytes", type.min_size, type.max_size);
        text += fmt::format("\n{}, {}, record {} aligned {}, fingerprint {}\n", heading(type), encoded,
                            on_each([&](Layouts &layouts) { return layouts.of(type).size; }),
                            on_each([&](Layouts &layouts) { return layouts.of(type).alignment; }),
                            spelled_fingerprint(type));
        for (const Enumerator &each : type.enumerators) {
            text += fmt::format("    {} = {}\n", each.name, each.value);
        }
        if (!type.reserved.empty()) {
            text += fmt::format("    reserved {}\n", spelled(type.reserved));
        }
        add_members(type);
        add_fields(type);
    }

    static std::string heading(const Type &type) {
        constexpr std::string_view words[] = {"",      "enum",  "struct",        "message",       "array",
                                              "array", "bytes", "dynamic array", "dynamic bytes", "union"};
        static_assert(std::size(words) == kinds);
        std::string text = fmt::format("{} {}", words[static_cast<size_t>(type.kind)], type.name);
        text += has_tag(type) ? fmt::format(" = {}", type.tag) : "";
        text += type.key ? fmt::format(" key {}", *type.key) : "";
        if (is_array(type)) {
            text += holds_bytes(type) ? "" : " of " + type.element->name;
            text += is_dynamic(type) ? " counted by " + type.count->name : fmt::format("[{}]", type.capacity);
        } else if (type.kind == Kind::Union) {
            text += fmt::format(" by {} {}", type.selector->name, type.selector_name);
            text += type.enclosing != nullptr ? " in " + type.enclosing->name : "";
        }
        return text;
    }

    // In the order of the wire, with the counts and selectors that are elements of their own. A union that lives in
    // its owner's record takes all of it.
    void add_members(const Type &type) {
        size_t field = 0;
        for (const Member &member : type.members) {
            add(member.path.empty() ? "0" : offset(type, field), "", *member.type,
                with_attributes(joined(member.path), member.attributes));
            field += member.lives_in_next() ? 0 : 1;
        }
    }

    // Of arrays and unions. A union that lives in another record shows where that has its selector and alternatives.
    void add_fields(const Type &type) {
        const Type &record = type.enclosing != nullptr ? *type.enclosing : type;
        for (size_t i = 0; i < record.fields.size() && !has_members(type); ++i) {
            const Field &field = record.fields[i];
            if (field.type == &type) {
                add_alternatives(type, offset(record, i));
            } else if (&record == &type || field.name == type.selector_name) {
                add(offset(record, i), "", *field.type, declarator(type, field));
            }
        }
    }

    void add_alternatives(const Type &type, const std::string &offset) {
        for (const Alternative &each : type.alternatives) {
            add(offset, fmt::format("{}: ", fmt::join(each.values, ", ")), *each.type,
                with_attributes(each.name, each.attributes));
        }
    }

    void add(const std::string &offset, const std::string &values, const Type &type,
             const std::string &name) {
        text += fmt::format("  {:>7}  {}{}{}{}\n", offset, values, type.name, name.empty() ? "" : " ", name);
    }

    static std::string with_attributes(const std::string &name, const Attributes &attributes) {
        return attributes.empty() ? name : name + " " + spelled(attributes);
    }

    static std::string declarator(const Type &owner, const Field &field) {
        return field.storage == Field::Storage::Array     ? fmt::format("{}[{}]", field.name, owner.capacity)
               : field.storage == Field::Storage::Pointer ? "*" + field.name
                                                          : field.name;
    }

    std::string offset(const Type &record, size_t field) {
        return on_each([&](Layouts &layouts) { return layouts.of(record).offsets[field]; });
    }

    template <class Number>
    std::string on_each(Number number) {
        const uint64_t wide = number(lp64_);
        const uint64_t narrow = number(ilp32_);
        const uint64_t dense = number(i386_);
        return dense != narrow  ? fmt::format("{}/{}/{}", wide, narrow, dense)
               : narrow != wide ? fmt::format("{}/{}", wide, narrow)
                                : std::to_string(wide);
    }

    Layouts lp64_{lp64};
    Layouts ilp32_{ilp32};
    Layouts i386_{i386};
};

} // namespace

std::string emit_interface(const Schema &schema) {
    Interface interface;
    for (const Family &family : schema.families) {
        interface.add(family);
    }
    return interface.text;
}

} // namespace tlvc
