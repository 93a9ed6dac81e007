// FAMILY.h: the records, the prototypes, and what each type looks like on the wire.
#include "compiler/emit/emit.h"
#include "compiler/model/fingerprint.h"
#include "compiler/model/names.h"
#include "compiler/model/wire_description.h"

#include "base/wrap.h"

#include <fmt/format.h>

#include <utility>

namespace tlvc {

namespace {

using names::Constant;
using Storage = Field::Storage;

constexpr size_t width = 110;

// One paragraph as comment lines, wrapped at words.
std::string wrapped(const std::string &paragraph) {
    return tlvmsg::base::wrapped(paragraph, width, " * ") + "\n";
}

// Docs are text, but stand in comments: what would begin or end one there is taken apart.
std::string prose(const Doc &lines) {
    std::string text;
    for (const std::string &line : lines) {
        text += text.empty() ? "" : " ";
        for (const char c : line) {
            const char before = text.empty() ? ' ' : text.back();
            const bool mark = (before == '*' && c == '/') || (before == '/' && c == '*');
            text += mark ? " " : "";
            text += c;
        }
    }
    return text;
}

std::string comment(const Type &type) {
    std::string text = "/**\n";
    if (!type.doc.empty()) {
        text += wrapped(prose(type.doc)) + " *\n";
    }
    const std::vector<std::string> wire = describe_wire(type);
    text += wrapped(wire.front());
    for (size_t i = 1; i < wire.size(); ++i) {
        text += " * " + wire[i] + "\n";
    }
    if (names::record(type) != type.name && type.enclosing == nullptr) {
        text +=
            " *\n" + wrapped(fmt::format("System headers have a {} of their own: in C and C++ the type is "
                                         "called {}.",
                                         type.name, names::record(type)));
    }
    if (const Doc pitfalls = describe_pitfalls(type); !pitfalls.empty()) {
        text += " *\n" + wrapped(prose(pitfalls));
    }
    return text + " */\n";
}

std::string declared(const std::string &type, const std::string &name, const Doc &doc,
                     const std::string &indent = "    ") {
    std::string text;
    if (!doc.empty()) {
        text = indent + "/* " + prose(doc) + " */\n";
    }
    const char *space = type.ends_with('*') ? "" : " ";
    return text + indent + type + space + name + ";\n";
}

std::string alternative_members(const Type &type) {
    std::string text = "    __extension__ union {\n";
    for (const Alternative &alternative : type.alternatives) {
        text += declared(names::field_type(*alternative.type), alternative.name, alternative.doc, "        ");
    }
    return text + "    };\n";
}

// What is said of a count or selector that is a member of its own stands with the field that it lives in.
Doc doc_of(const Field &field) {
    Doc doc = field.doc;
    if (!field.shared_doc.empty()) {
        doc.push_back(field.type->kind == Kind::Union ? field.type->selector_name + ":" : "count:");
        doc.insert(doc.end(), field.shared_doc.begin(), field.shared_doc.end());
    }
    return doc;
}

std::string field(const Type &owner, const Field &field) {
    const std::string type = names::field_type(*field.type);
    switch (field.storage) {
    case Storage::Plain:
        return declared(type, field.name, doc_of(field));
    case Storage::Array:
        return declared(type, fmt::format("{}[{}]", field.name, owner.capacity), doc_of(field));
    case Storage::Pointer:
        return declared(type + " *", field.name, doc_of(field));
    case Storage::Alternatives:
        return alternative_members(*field.type);
    }
    return {};
}

std::string fields(const Type &type) {
    std::string text;
    for (const Field &each : type.fields) {
        text += field(type, each);
    }
    return text;
}

std::string record(const Type &type) {
    if (type.kind == Kind::Enumeration) {
        return fmt::format("typedef uint32_t {};\n", names::record(type));
    }
    if (type.enclosing != nullptr) {
        return "";
    }
    return fmt::format("typedef struct {0} {{\n{1}}} {0};\n", names::record(type), fields(type));
}

std::string prototypes(const Type &type) {
    const std::string record = names::record(type);
    return fmt::format("uint16_t {}(const {} *in);\n", names::size_operation(type), record) +
           fmt::format("uint8_t *{}(const {} *in, uint8_t *out);\n", names::encode_operation(type), record) +
           fmt::format("const uint8_t *{}(const uint8_t *in, {} *out);\n", names::decode_operation(type),
                       record);
}

std::string value(Constant what, const Type &type) {
    switch (what) {
    case Constant::Tag:
        return std::to_string(type.tag);
    case Constant::Capacity:
        return std::to_string(type.capacity);
    case Constant::Fingerprint:
        return fmt::format("UINT64_C({})", spelled_fingerprint(type));
    case Constant::Key:
        return fmt::format("UINT32_C({})", type.key.value_or(0));
    case Constant::MinSize:
        return std::to_string(type.min_size);
    case Constant::Size:
    case Constant::MaxSize:
        return std::to_string(type.max_size);
    }
    return {};
}

std::string constants(const Type &type) {
    std::string text;
    for (const Constant each : names::constants(type)) {
        text += fmt::format("#define {} {}\n", names::constant(each, type), value(each, type));
    }
    return text;
}

std::string enumerator_lines(const Type &type) {
    std::string text;
    for (const Enumerator &each : type.enumerators) {
        text += each.doc.empty() ? "" : "/* " + prose(each.doc) + " */\n";
        text += fmt::format("#define {} UINT32_C({})\n", names::enumerator(type, each), each.value);
    }
    return text;
}

// What a selector is to be for an alternative: the first of the values that choose it.
std::string choices(const Type &type) {
    std::string text;
    for (const Alternative &each : type.alternatives) {
        if (each.values.size() > 1) {
            text += fmt::format("/* The first of {}. */\n", fmt::join(each.values, ", "));
        }
        text += fmt::format("#define {} UINT32_C({})\n", names::choice(type, each), each.values.front());
    }
    return text;
}

std::string declaration(const Type &type) {
    return comment(type) + constants(type) + record(type) + enumerator_lines(type) + choices(type) +
           prototypes(type) + "\n";
}

// What the types that follow have in common.
std::string banner(const Section &section) {
    if (section.doc.empty()) {
        return "";
    }
    return "/*\n * " + std::string(width - 3, '-') + "\n" + wrapped(prose(section.doc)) + " */\n\n";
}

// A union without a record of its own is declared behind the structure that encloses it.
std::string declarations(const Type &type) {
    if (type.enclosing != nullptr) {
        return "";
    }
    std::string text = declaration(type);
    for (const Member &member : type.members) {
        if (member.type->enclosing == &type) {
            text += declaration(*member.type);
        }
    }
    return text;
}

std::string family_header(const Family &family) {
    std::string text = "/*\n" + wrapped(fmt::format("{}.h - {}", family.name, prose(family.doc)));
    text += fmt::format(
        " *\n * Generated by tlvc. What holds for every operation is said in <tlvmsg/runtime.h>.\n */\n"
        "#ifndef {0}\n#define {0}\n\n#include <tlvmsg/runtime.h>\n",
        names::guard(names::Header::Records, family.name));
    for (const Family *used : family.uses) {
        text += fmt::format("#include <tlvmsg/{}.h>\n", used->name);
    }
    text += "\n#ifdef __cplusplus\nextern \"C\" {\n#endif\n\n";
    const Section *section = nullptr;
    for (const Type *type : family.types) {
        if (std::exchange(section, type->section) != type->section) {
            text += banner(*type->section);
        }
        text += declarations(*type);
    }
    return text + "#ifdef __cplusplus\n}\n#endif\n\n#endif\n";
}

} // namespace

GeneratedFiles emit_header(const Family &family, Product) {
    return {{fmt::format("include/tlvmsg/{}.h", family.name), family_header(family)}};
}

} // namespace tlvc
