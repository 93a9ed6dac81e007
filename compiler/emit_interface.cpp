// interface.txt: what the schema promises to programs and peers, a line a type, a field and an enumerator, to
// be reviewed when it changes. The schema says the same, but not where C puts a field.
#include "checks.h"
#include "emit.h"
#include "layout.h"

#include <fmt/format.h>

namespace tlvc {

namespace {

class Interface {
public:
    std::string text = "# What peers and programs rely on: kinds, tags, members, capacities, encoded sizes, "
                       "and records. Written by\n"
                       "# './dev interface', compared with the schema by every test run. Columns of a field: "
                       "its offset where\n"
                       "# pointers have 8 bytes; behind slashes, where they have 4, and where numbers are "
                       "then aligned to 4 at most,\n"
                       "# when that differs.\n";

    void add(const Family &family) {
        text += fmt::format("\nfamily {}\n", family.name);
        for (const Type *type : family.types) {
            add(*type);
        }
    }

private:
    void add(const Type &type) {
        const std::string encoded = type.fixed_size()
                                        ? fmt::format("{} bytes", type.min_size)
                                        : fmt::format("{} to {} bytes", type.min_size, type.max_size);
        text += fmt::format("\n{}, {}, record {} aligned {}\n", heading(type), encoded,
                            on_each([&](Layouts &layouts) { return layouts.of(type).size; }),
                            on_each([&](Layouts &layouts) { return layouts.of(type).alignment; }));
        add_enumerators(type);
        add_members(type);
        add_fields(type);
    }

    static std::string heading(const Type &type) {
        switch (type.kind) {
        case Kind::Enumeration:
            return fmt::format("enum {} = {}", type.name, type.tag);
        case Kind::Structure:
            return fmt::format("struct {} = {}", type.name, type.tag);
        case Kind::Message:
            return fmt::format("message {}", type.name);
        case Kind::ElementArray:
        case Kind::PackedArray:
            return fmt::format("array {} of {}[{}]", type.name, type.element->name, type.capacity);
        case Kind::ByteArray:
            return fmt::format("bytes {}[{}]", type.name, type.capacity);
        case Kind::DynamicElements:
            return fmt::format("dynamic array {} of {} counted by {}", type.name, type.element->name,
                               type.count->name);
        case Kind::DynamicBytes:
            return fmt::format("dynamic bytes {} counted by {}", type.name, type.count->name);
        case Kind::Union:
            return fmt::format("union {} by {} {}{}", type.name, type.selector->name, type.selector_name,
                               type.enclosing != nullptr ? " in " + type.enclosing->name : "");
        case Kind::Scalar:
            break;
        }
        return type.name;
    }

    void add_enumerators(const Type &type) {
        for (const Enumerator &each : type.enumerators) {
            text += fmt::format("    {} = {}\n", each.name, each.value);
        }
    }

    // In the order of the wire, with the counts and selectors that are elements of their own. A union that lives in
    // its owner's record takes all of it.
    void add_members(const Type &type) {
        size_t field = 0;
        for (const Member &member : type.members) {
            add(member.path.empty() ? "0" : offset(type, field), "", *member.type,
                joined(member.path) + (member.zero_count ? " @zero_count" : ""));
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
                each.name + (each.end_by_length ? " @end_by_length" : ""));
        }
    }

    void add(const std::string &offset, const std::string &values, const Type &type,
             const std::string &name) {
        text += fmt::format("  {:>7}  {}{}{}{}\n", offset, values, type.name, name.empty() ? "" : " ", name);
    }

    static std::string declarator(const Type &owner, const Field &field) {
        switch (field.storage) {
        case Field::Storage::Plain:
        case Field::Storage::Alternatives:
            return field.name;
        case Field::Storage::Array:
            return fmt::format("{}[{}]", field.name, owner.capacity);
        case Field::Storage::Pointer:
            return "*" + field.name;
        }
        return {};
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
