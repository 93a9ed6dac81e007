#include "compiler/build/resolve.h"

#include "base/suggest.h"
#include "compiler/language/foreign_types.h"
#include "compiler/language/imports.h"
#include "compiler/model/attributes.h"
#include "compiler/model/references.h"

#include <algorithm>
#include <map>
#include <utility>

namespace tlvc {

namespace {

using syntax::Declaration;
using syntax::Form;

class Resolver {
public:
    Resolver(const Program &program, const Library &library, Diagnostics &faults)
        : program_(program), library_(library),
          faults_(faults), result_{std::make_unique<Schema>(), {}, program} {}

    Resolution run() {
        add_scalars();
        for (const auto &[place, file] : files_in_schema_order()) {
            declare_file(file);
        }
        for (const Declared &declared : result_.declared) {
            const size_t missing = missing_;
            certain_ =
                declared.syntax->readable && program_.units[declared.type->span.file].syntax.imports_found;
            link(declared);
            declared.type->sound = declared.type->sound && missing == missing_;
        }
        spread_faults();
        for (const Declared &declared : result_.declared) {
            assign_roles(*declared.type);
        }
        return std::move(result_);
    }

private:
    void add_scalars() {
        for (const wire::Scalar &scalar : wire::scalars) {
            Type &type = result_.schema->types.emplace_back();
            type.name = scalar.name;
            type.scalar = &scalar;
            type.tag = scalar.tag;
            types_[scalar.name] = &type;
        }
    }

    // The files by family and name, whatever the order in which they were given.
    using Files = std::multimap<std::pair<std::string, std::filesystem::path>, uint32_t>;
    Files files_in_schema_order() const {
        Files files;
        for (uint32_t file = 0; file < program_.units.size(); ++file) {
            const Unit &unit = program_.units[file];
            files.emplace(std::pair(unit.family, unit.canonical.filename()), file);
        }
        return files;
    }

    void declare_file(uint32_t file) {
        const Unit &unit = program_.units[file];
        auto &families = result_.schema->families;
        if (families.empty() || families.back().name != unit.family) {
            families.emplace_back().name = unit.family;
        }
        Family &family = families.back();
        Section &section = result_.schema->sections.emplace_back();
        family.sections.push_back(&section);
        section.named = unit.named;
        section.shipped = unit.shipped;
        section.file = file;
        const bool speaks_for_family = unit.canonical.filename() == "family.tlv";
        (speaks_for_family ? family.doc : section.doc) = unit.syntax.doc.lines;
        reserve(unit.syntax.reserved, family.reserved);
        for (const Declaration &declaration : unit.syntax.declarations) {
            declare(declaration, family, section);
        }
    }

    // Numbers that are too large have a fault.
    static void reserve(const std::vector<syntax::Reservation> &written, std::vector<Reserved> &reserved) {
        for (const syntax::Reservation &reservation : written) {
            for (const auto &[first, last, span] : reservation.ranges) {
                reserved.push_back(
                    {static_cast<uint32_t>(first.value), static_cast<uint32_t>(last.value), span});
            }
        }
        std::ranges::sort(reserved, {}, &Reserved::first);
    }

    void declare(const Declaration &syntax, const Family &family, Section &section) {
        Type &type = result_.schema->types.emplace_back();
        type.name = syntax.name.text;
        type.doc = syntax.doc.lines;
        type.family = &family;
        type.section = &section;
        type.span = syntax.name.span;
        type.sound = syntax.sound;
        type.in_place = syntax.member.has_value();
        for (const syntax::Enumerator &each : syntax.enumerators) {
            type.enumerators.push_back({std::string(each.name.text), static_cast<uint32_t>(each.value.value),
                                        each.doc.lines, each.name.span});
        }
        reserve(syntax.reserved, type.reserved);
        auto [first, is_new] = types_.try_emplace(syntax.name.text, &type);
        if (!is_new) {
            type.sound = false;
            duplicate(syntax, *first->second);
        }
        section.types.push_back(&type);
        result_.declared.push_back({&syntax, &type});
    }

    void duplicate(const Declaration &syntax, const Type &first) {
        if (first.family == nullptr) {
            faults_.report(fault::duplicate_name, syntax.name.span, syntax.name.text)
                .help("it is a scalar type that every file knows");
            return;
        }
        const bool newer = result_.is_newer(syntax.name.span, first.span);
        faults_.report(fault::duplicate_name, newer ? syntax.name.span : first.span, syntax.name.text)
            .note(newer ? first.span : syntax.name.span, "first declared here");
    }

    // A type that names one that is not sound is not sound itself.
    void spread_faults() {
        std::map<const Type *, std::vector<Type *>> users;
        std::vector<const Type *> unsound;
        for (const Declared &declared : result_.declared) {
            for (const Reference &each : references(*declared.type)) {
                users[each.type].push_back(declared.type);
            }
            if (!declared.type->sound) {
                unsound.push_back(declared.type);
            }
        }
        while (!unsound.empty()) {
            const Type *const type = unsound.back();
            unsound.pop_back();
            for (Type *const user : users[type]) {
                if (std::exchange(user->sound, false)) {
                    unsound.push_back(user);
                }
            }
        }
    }

    // The file of a name is that of its span: it decides what may be named there.
    const Type *find(const syntax::Name &name) {
        if (name.text.empty()) { // it could not be read
            return nullptr;
        }
        auto found = types_.find(name.text);
        if (found == types_.end()) {
            ++missing_;
            if (certain_) {
                undefined(name);
            }
            return nullptr;
        }
        const Type &type = *found->second;
        const std::vector<uint32_t> &imports = program_.units[name.span.file].imports;
        bool visible = type.family == nullptr || type.span.file == name.span.file || !certain_ ||
                       std::find(imports.begin(), imports.end(), type.span.file) != imports.end();
        if (!visible) {
            not_imported(name, type);
        }
        return &type;
    }

    void undefined(const syntax::Name &name) {
        const Report fault = faults_.report(fault::undefined_type, name.span, name.text);
        if (const std::optional<OwnType> own = own_type(name.text)) {
            fault.help(own->help);
            if (own->certain) {
                fault.correct({name.span, own->name});
            }
            return;
        }
        if (suggestions_left_ == 0) {
            return;
        }
        --suggestions_left_;
        std::vector<std::string_view> candidates = tlvmsg::base::names_of(types_);
        candidates.push_back(tlvmsg::base::nearest(name.text, tlvmsg::base::names_of(library_.types), 2));
        const std::string_view meant = tlvmsg::base::nearest(name.text, candidates);
        const bool as_it_is = meant == name.text; // which just lacks its import
        if (!as_it_is) {
            fault.suggest(name.text, candidates);
        }
        if (const auto shipped = library_.types.find(meant);
            shipped != library_.types.end() && !types_.contains(meant)) {
            fault.help(fmt::format("add: import \"{}\"", shipped->second.path));
            const bool certain = as_it_is || meant == tlvmsg::base::one_slip_from(name.text, candidates);
            if (certain && !declares_again(shipped->second.path)) {
                fault.correct(added_import(program_.units[name.span.file].syntax, shipped->second.path));
            }
        }
    }

    // True if a file of the library has types of names that are declared already.
    bool declares_again(const std::string &path) const {
        return std::ranges::any_of(library_.types, [&](const auto &each) {
            return each.second.path == path && types_.contains(each.first);
        });
    }

    void not_imported(const syntax::Name &name, const Type &type) {
        const Unit &there = program_.units[type.span.file];
        const Unit &here = program_.units[name.span.file];
        const std::filesystem::path relative =
            there.shipped ? std::filesystem::path(there.family) / there.canonical.filename()
                          : there.canonical.lexically_relative(here.canonical.parent_path());
        faults_.report(fault::type_not_imported, name.span, name.text)
            .note(type.span, "it is declared here")
            .help(fmt::format("add: import \"{}\"", relative.generic_string()))
            .correct(added_import(here.syntax, relative.generic_string()));
    }

    // A part that the form does not have is an empty name, which finds no type.
    void link(const Declared &declared) {
        const Declaration &syntax = *declared.syntax;
        Type &type = *declared.type;
        const bool bounded = syntax.form == Form::Array || syntax.form == Form::Bytes;
        const bool bytes = syntax.form == Form::Bytes || syntax.form == Form::DynamicBytes;
        type.element = bytes ? types_.at("uint8") : find(syntax.element);
        type.kind = kind_of(syntax.form, type.element);
        type.count = bounded ? types_.at("uint16") : find(syntax.count);
        type.capacity = bounded ? static_cast<uint32_t>(syntax.number.value) : 0;
        type.tag = is_array(type) ? wire::array_tag : static_cast<uint16_t>(syntax.number.value);
        type.key = syntax.key ? std::optional(static_cast<uint32_t>(syntax.key->value)) : std::nullopt;
        type.selector = find(syntax.selector);
        type.selector_name = syntax.selector_name.text;
        type.enclosing = syntax.enclosing ? find(*syntax.enclosing) : nullptr;
        for (const syntax::Member &written : syntax.members) {
            if (type.kind == Kind::Union) {
                type.alternatives.push_back(alternative(written, type.selector));
            } else {
                type.members.push_back(part<Member>(written));
            }
        }
    }

    static Kind kind_of(Form form, const Type *element) {
        const bool packed = element != nullptr && element->scalar != nullptr && element->scalar->width > 1;
        switch (form) {
        case Form::Enumeration:
            return Kind::Enumeration;
        case Form::Structure:
            return Kind::Structure;
        case Form::Message:
            return Kind::Message;
        case Form::Array:
            return packed ? Kind::PackedArray : Kind::ElementArray;
        case Form::Bytes:
            return Kind::ByteArray;
        case Form::DynamicArray:
            return Kind::DynamicElements;
        case Form::DynamicBytes:
            return Kind::DynamicBytes;
        case Form::Union:
            return Kind::Union;
        }
        return {};
    }

    // The part that members and alternatives have in common.
    template <typename Part>
    Part part(const syntax::Member &written) {
        Part part;
        part.name = written.name.text;
        part.type = find(written.type);
        part.doc = written.doc.lines;
        part.attributes = attributes_of(written);
        part.span = written.name.span;
        return part;
    }

    Alternative alternative(const syntax::Member &written, const Type *selector) {
        auto alternative = part<Alternative>(written);
        for (const syntax::Value &value : written.values) {
            alternative.values.push_back(value.name.empty() ? static_cast<uint32_t>(value.number)
                                                            : enumerator(value, selector));
        }
        return alternative;
    }

    uint32_t enumerator(const syntax::Value &value, const Type *selector) {
        if (selector == nullptr || !selector->sound || !certain_) {
            ++missing_; // for which there is a fault already
            return 0;
        }
        std::vector<std::string_view> candidates;
        for (const Enumerator &each : selector->enumerators) {
            if (each.name == value.name) {
                return each.value;
            }
            candidates.push_back(each.name);
        }
        ++missing_;
        const Report fault = faults_.report(fault::unknown_enumerator, value.span, value.name, selector->name)
                                 .note(selector->span, "it is declared here");
        if (suggestions_left_ != 0) {
            --suggestions_left_;
            fault.suggest(value.name, candidates);
        }
        return 0;
    }

    static Attributes attributes_of(const syntax::Member &written) {
        Attributes result;
        for (const Attribute &each : known_attributes) {
            if (std::ranges::find(written.attributes, each.name, &syntax::Name::text) !=
                written.attributes.end()) {
                result.push_back(&each);
            }
        }
        return result;
    }

    static void assign_roles(Type &type) {
        for (size_t i = 0; i + 1 < type.members.size(); ++i) {
            Member &member = type.members[i];
            const Type *next = type.members[i + 1].type;
            if (member.type == nullptr || next == nullptr) {
                continue;
            }
            if (member.type->kind == Kind::Scalar && is_dynamic(*next)) {
                member.role = Member::Role::CountOfNext;
            } else if (member.type->kind == Kind::Enumeration && next->kind == Kind::Union) {
                member.role = Member::Role::SelectorOfNext;
            }
        }
    }

    const Program &program_;
    const Library &library_;
    Diagnostics &faults_;
    Resolution result_;
    std::map<std::string_view, Type *> types_;
    size_t missing_ = 0;            // names that lead nowhere
    size_t suggestions_left_ = 200; // each compares a name with all others, and nobody reads more
    bool certain_ = true;           // that names in the declaration are what they seem
};

} // namespace

Resolution resolve(const Program &program, const Library &library, Diagnostics &faults) {
    return Resolver(program, library, faults).run();
}

} // namespace tlvc
