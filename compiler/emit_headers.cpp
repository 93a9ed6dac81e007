// FAMILY.h: the records, the prototypes, and what each type looks like on the wire. all.h: every family.
#include "emit.h"
#include "names.h"
#include "wire_layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

namespace tlvc {

namespace {

constexpr size_t width = 110;

std::string guard(const std::string &name) {
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return "TLVMSG_" + upper + "_H";
}

// One paragraph as comment lines, wrapped at words.
std::string wrapped(const std::string &paragraph, const std::string &prefix) {
    std::string text;
    std::string line = prefix;
    bool empty = true;
    for (size_t at = 0; at < paragraph.size();) {
        const size_t end = std::min(paragraph.find(' ', at), paragraph.size());
        const std::string word = paragraph.substr(at, end - at);
        if (!empty && line.size() + 1 + word.size() > width) {
            text += line + "\n";
            line = prefix;
        }
        line += " " + word;
        empty = false;
        at = end + 1;
    }
    return text + line + "\n";
}

// Docs are text, but stand in comments: what would begin or end one there is taken apart.
std::string prose(const std::vector<std::string> &lines) {
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
        text += wrapped(prose(type.doc), " *") + " *\n";
    }
    const std::vector<std::string> wire = describe_wire(type);
    text += wrapped(wire.front(), " *");
    for (size_t i = 1; i < wire.size(); ++i) {
        text += " * " + wire[i] + "\n";
    }
    return text + " */\n";
}

std::string field(const std::string &type, const std::string &name, const std::vector<std::string> &doc,
                  const std::string &indent = "    ") {
    std::string text;
    if (!doc.empty()) {
        text = indent + "/* " + prose(doc) + " */\n";
    }
    const char *space = type.ends_with('*') ? "" : " ";
    return text + indent + type + space + name + ";\n";
}

std::string array_fields(const Type &type) {
    static const std::vector<std::string> none;
    std::string text = field(record_name(*type.count), "count", none);
    const std::string item = type.element == nullptr ? "uint8_t" : field_type(*type.element);
    if (is_dynamic(type)) {
        return text + field(item + " *", storage_name(type), none);
    }
    return text + field(item, fmt::format("{}[{}]", storage_name(type), type.capacity), none);
}

std::string alternative_fields(const Type &type) {
    std::string text = "    __extension__ union {\n";
    for (const Alternative &alternative : type.alternatives) {
        text += field(field_type(*alternative.type), alternative.name, alternative.doc, "        ");
    }
    return text + "    };\n";
}

std::string record_fields(const Type &type) {
    if (is_array(type)) {
        return array_fields(type);
    }
    if (type.kind == Kind::Union) {
        return field(field_type(*type.selector), type.selector_name, {}) + alternative_fields(type);
    }
    std::string text;
    for (const Field &each : fields(type)) {
        text += each.name.empty() ? alternative_fields(*each.type)
                                  : field(field_type(*each.type), each.name, *each.doc);
    }
    return text;
}

std::string record(const Type &type) {
    if (type.kind == Kind::Enumeration) {
        return fmt::format("typedef uint32_t {};\n", type.name);
    }
    if (type.enclosing != nullptr) {
        return "";
    }
    return fmt::format("typedef struct {0} {{\n{1}}} {0};\n", type.name, record_fields(type));
}

std::string prototypes(const Type &type) {
    const std::string record = record_name(type);
    return fmt::format("uint16_t {}(const {} *in);\n", size_operation(type), record) +
           fmt::format("uint8_t *{}(const {} *in, uint8_t *out);\n", encode_operation(type), record) +
           fmt::format("const uint8_t *{}(const uint8_t *in, {} *out);\n", decode_operation(type), record);
}

std::string declaration(const Type &type) { return comment(type) + record(type) + prototypes(type) + "\n"; }

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

std::string opening(const std::string &name, const std::string &doc) {
    return "/*\n" + wrapped(doc, " *") + " *\n" +
           " * Generated by tlvc. What holds for every operation is said in <tlvmsg/runtime.h>.\n */\n" +
           fmt::format("#ifndef {0}\n#define {0}\n\n", guard(name));
}

std::string family_header(const Family &family) {
    std::string text = opening(family.name, fmt::format("{}.h - {}", family.name, prose(family.doc)));
    text += "#include <tlvmsg/runtime.h>\n";
    for (const Family *used : family.uses) {
        text += fmt::format("#include <tlvmsg/{}.h>\n", used->name);
    }
    text += "\n#ifdef __cplusplus\nextern \"C\" {\n#endif\n\n";
    for (const Type *type : family.types) {
        text += declarations(*type);
    }
    return text + "#ifdef __cplusplus\n}\n#endif\n\n#endif\n";
}

std::string umbrella_header(const Schema &schema) {
    std::string text = opening("all", "all.h - every family of messages.");
    for (const auto &family : schema.families) {
        text += fmt::format("#include <tlvmsg/{}.h>\n", family->name);
    }
    return text + "\n#endif\n";
}

} // namespace

GeneratedFiles emit_headers(const Schema &schema) {
    GeneratedFiles files;
    for (const auto &family : schema.families) {
        files.push_back({fmt::format("include/tlvmsg/{}.h", family->name), family_header(*family)});
    }
    files.push_back({"include/tlvmsg/all.h", umbrella_header(schema)});
    return files;
}

} // namespace tlvc
