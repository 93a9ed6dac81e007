// The schema as one JSON document, for programs that are not ours. Keys that descriptors know as well, forms/types/
// writes under the same names, and a test compares what both say of the library.
#include "base/ascii.h"
#include "base/json.h"
#include "compiler/emit/emit.h"
#include "compiler/model/attributes.h"
#include "compiler/model/fingerprint.h"
#include "compiler/model/layout.h"
#include "compiler/model/names.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <set>

namespace tlvc {

namespace {

using Json = nlohmann::ordered_json;

constexpr int format = 1; // another number when a key goes or changes its meaning

std::string text(const Doc &lines) { return fmt::format("{}", fmt::join(lines, " ")); }

std::vector<std::string> names_of(const std::vector<const Type *> &types) {
    std::vector<std::string> result;
    std::ranges::transform(types, std::back_inserter(result), &Type::name);
    return result;
}

const char *kind_word(Kind kind) {
    constexpr const char *words[] = {
        "scalar",     "enumeration",   "structure",          "message", "array", "array",
        "byte array", "dynamic array", "dynamic byte array", "union"};
    static_assert(std::size(words) == kinds);
    return words[static_cast<size_t>(kind)];
}

Json flags(const Attributes &attributes, bool shared_with_next) {
    Json words = Json::array();
    if (shared_with_next) {
        words.push_back("shared_with_next");
    }
    std::ranges::transform(attributes, std::back_inserter(words), &Attribute::name);
    return words;
}

// Of each type those that name it in a member, an alternative, as their item or as their selector.
using Users = std::map<const Type *, std::set<std::string>>;

Users users_in(const Schema &schema) {
    Users users;
    for (const Type &type : schema.types) {
        users[type.element].insert(type.name);
        users[type.selector].insert(type.name);
        for (const Member &member : type.members) {
            users[member.type].insert(type.name);
        }
        for (const Alternative &alternative : type.alternatives) {
            users[alternative.type].insert(type.name);
        }
    }
    return users;
}

// ---- What a type has of its own ----

Json enumerators(const Type &type) {
    Json list = Json::array();
    for (const Enumerator &each : type.enumerators) {
        list.push_back({{"name", each.name},
                        {"doc", text(each.doc)},
                        {"value", each.value},
                        {"macro", names::enumerator(type, each)}});
    }
    return list;
}

void add_reserved(Json &json, const std::vector<Reserved> &ranges) {
    for (const Reserved &each : ranges) {
        json["reserved"].push_back({{"first", each.first}, {"last", each.last}});
    }
}

Json members(const Type &type) {
    Json list = Json::array();
    for (const Member &each : type.members) {
        list.push_back({{"name", each.name},
                        {"path", joined(each.path)},
                        {"doc", text(each.doc)},
                        {"type", each.type->name},
                        {"flags", flags(each.attributes, each.lives_in_next())}});
    }
    return list;
}

Json alternatives(const Type &type) {
    Json list = Json::array();
    for (const Alternative &each : type.alternatives) {
        list.push_back({{"name", each.name},
                        {"doc", text(each.doc)},
                        {"values", each.values},
                        {"type", each.type->name},
                        {"flags", flags(each.attributes, false)},
                        {"macro", names::choice(type, each)}});
    }
    return list;
}

Json array(const Type &type) {
    Json json = {{"element", type.element->name}};
    if (!is_dynamic(type)) {
        json["capacity"] = type.capacity;
    }
    if (!is_dynamic(type) && !holds_bytes(type)) {
        json["packed"] = type.kind == Kind::PackedArray;
    }
    json.update({{"count_width", type.count->scalar->width},
                 {"count", type.count->name},
                 {"max_count", type.max_count}});
    return json;
}

Json choice(const Type &type) {
    Json json = {{"selector", type.selector->name}, {"selector_name", type.selector_name}};
    if (type.enclosing != nullptr) {
        json["enclosing"] = type.enclosing->name;
    }
    json["alternatives"] = alternatives(type);
    return json;
}

Json particulars(const Type &type) {
    switch (type.kind) {
    case Kind::Scalar:
        return {{"signed", is_signed(type)}};
    case Kind::Enumeration: {
        Json json = {{"enumerators", enumerators(type)}};
        add_reserved(json, type.reserved);
        return json;
    }
    case Kind::Structure:
    case Kind::Message:
        return {{"members", members(type)}};
    case Kind::ElementArray:
    case Kind::PackedArray:
    case Kind::ByteArray:
    case Kind::DynamicElements:
    case Kind::DynamicBytes:
        return array(type);
    case Kind::Union:
        return choice(type);
    }
    return {};
}

// ---- Where C puts it, and what C calls it ----

// By the paths of the fields; none in numbers.
Json offsets(const Type &type, Layouts &layouts) {
    const Type &record = type.enclosing != nullptr ? *type.enclosing : type;
    Json json;
    const auto add = [&](const std::vector<std::string> &path) {
        json[joined(path)] = layouts.offset(record, path);
    };
    for (const Member &member : type.members) {
        if (!member.path.empty()) {
            add(member.path);
        }
    }
    if (type.kind == Kind::Union) {
        add({type.selector_name});
    }
    for (const Alternative &alternative : type.alternatives) {
        add({alternative.name});
    }
    for (size_t i = 0; is_array(type) && i < type.fields.size(); ++i) {
        add({type.fields[i].name});
    }
    return json;
}

Json layout(const Type &type, Layouts &layouts) {
    const RecordLayout &record = layouts.of(type);
    Json json = {{"size", record.size}, {"alignment", record.alignment}};
    if (!is_number(type)) {
        json["offsets"] = offsets(type, layouts);
    }
    return json;
}

Json c_names(const Type &type) {
    Json json = {
        {"header", fmt::format("tlvmsg/{}.h", type.family != nullptr ? type.family->name : "runtime")},
        {"record", names::record(type)},
        {"field", names::field_type(type)},
        {"functions",
         {{"size", names::size_operation(type)},
          {"encode", names::encode_operation(type)},
          {"decode", names::decode_operation(type)}}},
        {"descriptor", names::descriptor_accessor(type)},
        {"macros", Json::object()}};
    for (const names::Constant each : names::constants(type)) {
        std::string key(names::word(each));
        std::ranges::transform(key, key.begin(), tlvmsg::base::lower);
        json["macros"][key] = names::constant(each, type);
    }
    return json;
}

class Description {
public:
    explicit Description(const Schema &schema) : users_(users_in(schema)) {}

    Json of(const Type &type) {
        Json json = {{"name", type.name},
                     {"family", type.family != nullptr ? type.family->name : ""},
                     {"section", type.section != nullptr ? text(type.section->doc) : ""},
                     {"doc", text(type.doc)},
                     {"kind", kind_word(type.kind)}};
        if (type.tag != 0) {
            json["tag"] = type.tag;
        }
        if (type.key) {
            json["key"] = *type.key;
        }
        json.update({{"min_encoded", type.min_size},
                     {"max_encoded", type.max_size},
                     {"fingerprint", spelled_fingerprint(type)}});
        json.update(particulars(type));
        json["layouts"] = {
            {"LP64", layout(type, lp64_)}, {"ILP32", layout(type, ilp32_)}, {"i386", layout(type, i386_)}};
        json["c"] = c_names(type);
        json["users"] = users_[&type];
        return json;
    }

private:
    Users users_;
    Layouts lp64_{lp64};
    Layouts ilp32_{ilp32};
    Layouts i386_{i386};
};

Json describe(const Family &family) {
    Json sections = Json::array();
    for (const Section *each : family.sections) {
        sections.push_back(
            {{"doc", text(each->doc)}, {"imported", !each->named}, {"types", names_of(each->types)}});
    }
    std::vector<std::string> uses;
    std::ranges::transform(family.uses, std::back_inserter(uses), &Family::name);
    Json json = {{"name", family.name}, {"doc", text(family.doc)}, {"uses", uses}, {"sections", sections}};
    add_reserved(json, family.reserved);
    return json;
}

// Each in a line of its own, so that differences between two documents can be read.
std::string lines(const std::vector<Json> &items) {
    std::vector<std::string> texts;
    for (const Json &each : items) {
        texts.push_back(tlvmsg::base::json_text(each));
    }
    return fmt::format("[\n{}\n]", fmt::join(texts, ",\n"));
}

} // namespace

std::string emit_description(const Schema &schema) {
    Description description(schema);
    std::vector<Json> families;
    std::vector<Json> types;
    for (const Type &type : schema.types) {
        if (type.family == nullptr) {
            types.push_back(description.of(type));
        }
    }
    for (const Family &family : schema.families) {
        families.push_back(describe(family));
        for (const Type *type : family.types) {
            types.push_back(description.of(*type));
        }
    }
    return fmt::format("{{\"format\":{},\n\"families\":{},\n\"types\":{}}}\n", format, lines(families),
                       lines(types));
}

GeneratedFiles emit_described(const Schema &schema) {
    return {{"share/tlvmsg/schema.json", emit_description(schema)}};
}

} // namespace tlvc
