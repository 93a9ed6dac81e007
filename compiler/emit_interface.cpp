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
                       "# pointers have 8 bytes, and where they have 4 when that differs.\n";

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
                            both(lp64_.of(type).size, ilp32_.of(type).size),
                            both(lp64_.of(type).alignment, ilp32_.of(type).alignment));
        add_enumerators(type);
        add_fields(type);
        add_members(type);
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
            return fmt::format("union {} by {} {}", type.name, type.selector->name, type.selector_name);
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

    // A union that lives in another record shows where that has its selector and alternatives.
    void add_fields(const Type &type) {
        if (type.enclosing != nullptr) {
            add_shared_fields(type);
        }
        for (size_t i = 0; i < type.fields.size(); ++i) {
            const Field &field = type.fields[i];
            const std::string offset = both(lp64_.of(type).offsets[i], ilp32_.of(type).offsets[i]);
            if (field.storage == Field::Storage::Alternatives) {
                add_alternatives(*field.type, offset);
            } else {
                text += fmt::format("  {:>7}  {} {}\n", offset, field.type->name, declarator(type, field));
            }
        }
    }

    void add_shared_fields(const Type &union_type) {
        const Type &record = *union_type.enclosing;
        for (size_t i = 0; i < record.fields.size(); ++i) {
            const std::string offset = both(lp64_.of(record).offsets[i], ilp32_.of(record).offsets[i]);
            if (record.fields[i].storage == Field::Storage::Alternatives) {
                add_alternatives(union_type, offset);
            } else if (record.fields[i].name == union_type.selector_name) {
                text += fmt::format("  {:>7}  {} {}\n", offset, union_type.selector->name,
                                    union_type.selector_name);
            }
        }
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

    void add_alternatives(const Type &type, const std::string &offset) {
        for (const Alternative &each : type.alternatives) {
            text += fmt::format("  {:>7}  {}: {} {}{}\n", offset, fmt::join(each.values, ", "),
                                each.type->name, each.name, each.end_by_length ? " @end_by_length" : "");
        }
    }

    // Fields and members are the same, but for counts and selectors that are elements of their own.
    void add_members(const Type &type) {
        for (const Member &member : type.members) {
            if (member.lives_in_next() || member.zero_count) {
                text += fmt::format("           sent: {} {}{}\n", member.type->name, joined(member.path),
                                    member.zero_count ? " @zero_count" : "");
            }
        }
    }

    static std::string both(uint64_t wide, uint64_t narrow) {
        return wide == narrow ? std::to_string(wide) : fmt::format("{}/{}", wide, narrow);
    }

    Layouts lp64_{lp64};
    Layouts ilp32_{ilp32};
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
