// Writes a schema that nobody designed: every kind of type, nested, and shared between files and families.
// The same seed gives the same schema.
//
//     make_random_schema SEED DIRECTORY      writes DIRECTORY/FAMILY/FILE.tlv
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

// A type as far as its users care.
struct Usable {
    enum Use { Number, Enumeration, Structure, Bounded, Dynamic, Union };

    Use use = Number;
    std::string name;
    uint64_t largest = 0;      // bytes on the wire: nothing must outgrow what an element can announce
    std::string governor = {}; // the member that has to stand before it: type and name of a count or selector
    bool in_place = false;     // the member declares it, with this behind its name
    std::string behind = {};
};

// No char: its encoder writes what its decoder refuses, so the records of its users do not come back.
const std::vector<Usable> numbers{
    {Usable::Number, "uint8", 5},   {Usable::Number, "int8", 5},   {Usable::Number, "uint16", 6},
    {Usable::Number, "int16", 6},   {Usable::Number, "uint32", 8}, {Usable::Number, "int32", 8},
    {Usable::Number, "uint64", 12}, {Usable::Number, "int64", 12},
};

// Names that mean something elsewhere, in the language or in what is generated from it.
const std::vector<std::string> words{"array",   "bytes", "by",     "of",   "in",     "items", "message",
                                     "dynamic", "size",  "record", "tag",  "encode", "port",  "counts",
                                     "members", "rules", "index",  "time", "signal", "free",  "memcpy"};

// Names for types that generated code or its surroundings use for something else, in another scope. Members
// are called otherwise, for an enumeration and a member of one record cannot share a name.
const std::vector<std::string> type_words{"codec",      "wire",     "structure", "member",       "run",
                                          "zero_count", "union_of", "vlan",      "vlan_members", "operations",
                                          "expanded",   "field",    "type_of",   "kind",         "found",
                                          "descriptor", "at",       "text"};

const std::vector<std::string> enumerators{"static", "default", "int", "max", "size", "count", "_", "NULL"};

const std::vector<std::string> remarks{
    "Plain words.",
    "With \"quotes\" and 'others'.",
    "A \\ backslash, \\n no newline, ?\?/ no trigraph.",
    "Percent %s, braces {} and a $ sign.",
    "Ends a comment */ early, begins one /* within, and // another.",
    "Grün, 漢字.",
    "Ends in a backslash \\",
};

constexpr uint64_t largest_structure = 12000;
constexpr uint64_t largest_nested = 2500;
constexpr uint64_t largest_dynamic_element = 100;

struct File {
    std::string family;
    std::string name;
    std::string remark;
    std::vector<std::string> imports;
    std::vector<std::string> declarations;
    std::vector<Usable> own;     // declared here
    std::vector<Usable> visible; // and in the imported files
};

// Lines of one body: keeps the names apart and adds up the size.
struct Body {
    std::string lines;
    uint64_t largest = 4;
    std::set<std::string> names;
};

class SchemaMaker {
public:
    explicit SchemaMaker(uint64_t seed) : random_(seed) {}

    std::vector<File> make() {
        for (const char *family : {"alpha", "beta", "gamma"}) {
            for (const char *name : {"one", "two"}) {
                make_file(family, name);
            }
        }
        return files_;
    }

private:
    uint64_t below(uint64_t limit) { return random_() % limit; }
    bool one_in(uint64_t chance) { return below(chance) == 0; }

    template <class T>
    const T &any(const std::vector<T> &choice) {
        return choice[below(choice.size())];
    }

    void make_file(const std::string &family, const std::string &name) {
        File file{family, name, any(remarks), {}, {}, {}, numbers};
        for (const File &earlier : files_) {
            if (one_in(2)) {
                file.imports.push_back(fmt::format("../{}/{}.tlv", earlier.family, earlier.name));
                file.visible.insert(file.visible.end(), earlier.own.begin(), earlier.own.end());
            }
        }
        forget_unions_without_selector(file.visible);
        files_.push_back(file);
        declare_enumeration();
        for (int i = 0; i < 12; ++i) {
            if (one_in(3)) {
                declare_message();
            } else {
                declare_structure();
            }
        }
        declare_structure_of_char();
        files_.back().declarations.push_back(fmt::format("reserved {}, {}\n", new_tag(), new_tag()));
        std::shuffle(files_.back().declarations.begin(), files_.back().declarations.end(), random_);
    }

    // A union may come from an imported file and its selector from one that is not imported.
    static void forget_unions_without_selector(std::vector<Usable> &visible) {
        const auto is_named = [&](const std::string &type) {
            return std::any_of(visible.begin(), visible.end(),
                               [&](const Usable &each) { return each.name == type; });
        };
        std::erase_if(visible, [&](const Usable &each) {
            return each.use == Usable::Union && !is_named(each.governor.substr(0, each.governor.find(' ')));
        });
    }

    File &file() { return files_.back(); }

    std::string new_name(const std::string &kind) {
        if (one_in(8)) {
            const std::string &word = any(type_words);
            if (taken_.insert(word).second) {
                return word;
            }
        }
        return fmt::format("{}_{}_{}_{}", file().family, any(words), kind, ++names_);
    }

    uint64_t new_tag() {
        for (;;) {
            const uint64_t tag = 1001 + below(UINT16_MAX - 1000);
            if (tags_.insert(tag).second) {
                return tag;
            }
        }
    }

    std::string remark(const std::string &indent = "") {
        return one_in(3) ? fmt::format("{}/// {}\n", indent, any(remarks)) : "";
    }

    void declare(const std::string &text) { file().declarations.push_back(remark() + text + "\n"); }

    Usable declare(const Usable &usable, const std::string &text) {
        declare(text);
        file().own.push_back(usable);
        file().visible.push_back(usable);
        return usable;
    }

    // One that is visible, of that use and no larger than that; there are always enumerations.
    Usable visible(Usable::Use use, uint64_t largest = largest_nested) {
        std::vector<Usable> choice;
        std::copy_if(file().visible.begin(), file().visible.end(), std::back_inserter(choice),
                     [&](const Usable &each) { return each.use == use && each.largest <= largest; });
        return choice.empty() ? visible(Usable::Enumeration) : any(choice);
    }

    Usable enumeration_or_structure(uint64_t largest = largest_nested) {
        return visible(one_in(2) ? Usable::Enumeration : Usable::Structure, largest);
    }

    void add(Body &body, const std::string &type, const std::string &name,
             const std::string &attribute = "") {
        body.lines += fmt::format("{}    {} {}{}\n", remark("    "), type, name, attribute);
    }

    std::string new_member_name(Body &body) {
        const std::string &word = any(words);
        std::string name = word;
        for (int i = 2; !body.names.insert(name).second; ++i) {
            name = fmt::format("{}_{}", word, i);
        }
        return name;
    }

    void add_member(Body &body, const Usable &type) {
        if (body.largest + type.largest > largest_structure) {
            return;
        }
        if (!type.governor.empty()) {
            body.lines += fmt::format("    {}\n", type.governor);
        }
        const bool clears_count = type.use == Usable::Dynamic && one_in(4);
        const std::string as = type.in_place && one_in(2) ? " as " + new_name("array") : "";
        add(body, type.name, new_member_name(body), type.behind + as + (clears_count ? " @zero_count" : ""));
        body.largest += type.largest;
    }

    Usable any_member_type() {
        switch (below(10)) {
        case 0:
            return visible(Usable::Structure);
        case 1:
            return visible(Usable::Enumeration);
        case 2:
            return visible(Usable::Bounded);
        case 3:
        case 4:
            return make_bounded();
        case 5:
            return one_in(2) ? visible(Usable::Dynamic) : make_dynamic();
        case 6:
            return one_in(3) ? visible(Usable::Union) : declare_union();
        default:
            return any(numbers);
        }
    }

    Usable declare_enumeration() {
        const std::string name = new_name("enum");
        std::string body;
        for (const std::string &enumerator : enumerators) {
            if (one_in(6)) {
                body += fmt::format("{}    {} = {}\n", remark("    "), enumerator,
                                    body.size() + (one_in(3) ? UINT32_MAX - 1000 : 0));
            }
        }
        if (!body.empty() && one_in(2)) {
            body += "    reserved 5000, 6000 to 6010\n";
        }
        return declare({Usable::Enumeration, name, 12}, fmt::format("enum {} = {}", name, new_tag()) +
                                                            (body.empty() ? "" : " {\n" + body + "}"));
    }

    // An array, as a member that declares it or as a type of its own. `before` and `behind` surround its name there.
    Usable array(Usable in_place, const std::string &before, const std::string &behind) {
        if (one_in(2)) {
            return in_place;
        }
        in_place.name = new_name("array");
        in_place.in_place = false;
        in_place.behind = {};
        return declare(in_place, before + in_place.name + behind);
    }

    Usable make_bounded() {
        if (one_in(3)) {
            const auto size = any(std::vector<uint64_t>{1, 2, 6, 40, 1900});
            const std::string capacity = fmt::format("[{}]", size);
            return array({Usable::Bounded, "bytes" + capacity, 10 + size, "", true}, "bytes ", capacity);
        }
        const bool packed = one_in(2);
        const Usable item = packed ? numbers[2 + below(numbers.size() - 2)] : enumeration_or_structure(500);
        const uint64_t count = 1 + below(packed ? 20 : 4);
        const std::string type = fmt::format("{}[{}]", item.name, count);
        return array({Usable::Bounded, type, 10 + count * item.largest, "", true}, "array ", " of " + type);
    }

    Usable make_dynamic() {
        if (one_in(2)) {
            const std::string count = any(std::vector<std::string>{"uint8", "uint16", "uint32"});
            const std::string behind = " counted by " + count;
            return array({Usable::Dynamic, "dynamic bytes", 320, count + " count", true, behind},
                         "dynamic bytes ", behind);
        }
        const std::string count = any(std::vector<std::string>{"uint8", "uint16"});
        const Usable item = enumeration_or_structure(largest_dynamic_element);
        const std::string behind = fmt::format(" of {} counted by {}", item.name, count);
        return array(
            {Usable::Dynamic, "dynamic array", 20 + 40 * item.largest, count + " count", true, behind},
            "dynamic array ", behind);
    }

    std::string alternatives(Body &body) {
        std::set<uint64_t> taken;
        const auto new_value = [&] {
            for (;;) {
                const uint64_t value = one_in(8) ? below(UINT32_MAX) : below(40);
                if (taken.insert(value).second) {
                    return std::to_string(value);
                }
            }
        };
        for (uint64_t i = 0; i <= below(5); ++i) {
            std::string values = new_value();
            while (one_in(3)) {
                values += ", " + new_value();
            }
            const Usable type = one_in(3) ? any(numbers) : enumeration_or_structure();
            const bool by_length = type.use == Usable::Enumeration && one_in(2);
            add(body, values + ": " + type.name, new_member_name(body), by_length ? " @end_by_length" : "");
            body.largest = std::max(body.largest, type.largest);
        }
        return body.lines;
    }

    // The largest size counts the selector, which is an element before it.
    Usable declare_union() {
        const std::string name = new_name("union");
        const std::string selector = visible(Usable::Enumeration).name + " selector";
        Body body;
        const std::string text = alternatives(body);
        return declare({Usable::Union, name, 12 + body.largest, selector},
                       fmt::format("union {} by {} {{\n{}}}", name, selector, text));
    }

    // A union that works on the record of the structure that holds it.
    void add_shared_union(Body &body, const std::string &structure) {
        const std::string name = new_name("union");
        const std::string selector = visible(Usable::Enumeration).name + " selector";
        Body alternative_body{{}, 0, body.names};
        const std::string text = alternatives(alternative_body);
        body.names = alternative_body.names;
        declare(fmt::format("union {} by {} in {} {{\n{}}}", name, selector, structure, text));
        add_member(body, {Usable::Union, name, 12 + alternative_body.largest, selector});
    }

    Usable declare_structure() {
        const std::string name = new_name("record");
        Body body;
        if (one_in(2)) {
            declare_enumeration();
        }
        add_member(body, any(numbers));
        const uint64_t members = below(6);
        for (uint64_t i = 0; i < members; ++i) {
            add_member(body, any_member_type());
        }
        if (one_in(6)) {
            add_shared_union(body, name);
        }
        return declare({Usable::Structure, name, body.largest},
                       fmt::format("struct {} = {} {{\n{}}}", name, new_tag(), body.lines));
    }

    // Not for others to use.
    void declare_structure_of_char() {
        Body body;
        add_member(body, any_member_type());
        add(body, "char", new_member_name(body));
        declare(fmt::format("struct {} = {} {{\n{}}}", new_name("record"), new_tag(), body.lines));
    }

    void declare_message() {
        Body body;
        const uint64_t members = 1 + below(4);
        for (uint64_t i = 0; i < members; ++i) {
            add_member(body, enumeration_or_structure(largest_structure));
        }
        const std::string key = messages_ % 2 == 0 ? "" : fmt::format(" key {}", messages_);
        ++messages_;
        declare(fmt::format("message {}{} {{\n{}}}", new_name("message"), key, body.lines));
    }

    std::mt19937_64 random_;
    std::vector<File> files_;
    std::set<uint64_t> tags_;
    std::set<std::string> taken_;
    int names_ = 0;
    uint64_t messages_ = 0;
};

void write(const File &file, const std::filesystem::path &root) {
    const std::filesystem::path directory = root / file.family;
    std::filesystem::create_directories(directory);
    std::ofstream out(directory / (file.name + ".tlv"));
    out << "//! " << file.remark << "\n";
    for (const std::string &import : file.imports) {
        out << fmt::format("import \"{}\"\n", import);
    }
    for (const std::string &declaration : file.declarations) {
        out << "\n" << declaration;
    }
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        fmt::print(stderr, "usage: make_random_schema SEED DIRECTORY\n");
        return EXIT_FAILURE;
    }
    for (const File &file : SchemaMaker(std::stoull(argv[1])).make()) {
        write(file, argv[2]);
    }
    return EXIT_SUCCESS;
}
