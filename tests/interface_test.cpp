// schema/interface.txt says of every type what peers and programs rely on. The descriptors, and with them the
// records as this compiler laid them out, must say the same.
#include <tlvmsg/register.h>
#include <tlvmsg/types.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace {

std::string joined_values(const tlvmsg_alternative &alternative) {
    std::string text;
    for (uint32_t i = 0; i < alternative.value_count; ++i) {
        text += (i == 0 ? "" : ", ") + std::to_string(alternative.values[i]);
    }
    return text;
}

// A type as the baseline has it, but for the widths of columns, and offsets of this platform only.
class Description {
public:
    explicit Description(const tlvmsg_type &type) : type_(type) {
        out_ << heading() << ", ";
        if (type.min_encoded != type.max_encoded) {
            out_ << type.min_encoded << " to ";
        }
        out_ << type.max_encoded << " bytes, record " << type.size << " aligned " << type.alignment << "\n";
        for (uint32_t i = 0; i < type.enumerator_count; ++i) {
            out_ << type.enumerators[i].name << " = " << type.enumerators[i].value << "\n";
        }
        fields();
    }

    std::string text() const { return out_.str(); }

private:
    std::string heading() const {
        const std::string name = type_.name;
        const std::string tagged = name + " = " + std::to_string(type_.tag);
        const std::string capacity = "[" + std::to_string(type_.capacity) + "]";
        const std::string count = " counted by uint" + std::to_string(8 * type_.count_width);
        switch (type_.kind) {
        case TLVMSG_SCALAR:
            return type_.name;
        case TLVMSG_ENUMERATION:
            return "enum " + tagged;
        case TLVMSG_STRUCTURE:
            return "struct " + tagged;
        case TLVMSG_MESSAGE:
            return "message " + name;
        case TLVMSG_ELEMENT_ARRAY:
        case TLVMSG_PACKED_ARRAY:
            return "array " + name + " of " + type_.element->name + capacity;
        case TLVMSG_BYTE_ARRAY:
            return "bytes " + name + capacity;
        case TLVMSG_DYNAMIC_ELEMENTS:
            return "dynamic array " + name + " of " + type_.element->name + count;
        case TLVMSG_DYNAMIC_BYTES:
            return "dynamic bytes " + name + count;
        case TLVMSG_UNION:
            return "union " + name + " by " + type_.selector->name + " " + type_.selector_name + owner();
        }
        return {};
    }

    // The structure whose record a union takes, if it has none of its own.
    std::string owner() const {
        for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
            const tlvmsg_type &type = *tlvmsg_type_at(i);
            for (uint32_t m = 0; m < type.member_count; ++m) {
                if (type.members[m].type == &type_ && *type.members[m].path == '\0') {
                    return std::string(" in ") + type.name;
                }
            }
        }
        return "";
    }

    void field(size_t offset, const std::string &type, const std::string &name) {
        out_ << offset << " " << type << (name.empty() ? "" : " ") << name << "\n";
    }

    void fields() {
        if (type_.element != nullptr) {
            const bool bytes = type_.kind == TLVMSG_BYTE_ARRAY || type_.kind == TLVMSG_DYNAMIC_BYTES;
            const std::string storage = bytes ? "bytes" : "items";
            field(0, "uint" + std::to_string(8 * type_.count_width), "count");
            field(type_.items_offset, type_.element->name,
                  type_.capacity == 0 ? "*" + storage : storage + "[" + std::to_string(type_.capacity) + "]");
        }
        if (type_.kind == TLVMSG_UNION) {
            field(type_.selector_offset, type_.selector->name, type_.selector_name);
            alternatives(type_);
        }
        for (uint32_t i = 0; i < type_.member_count; ++i) {
            const tlvmsg_member &member = type_.members[i];
            const bool zero_count = (member.flags & TLVMSG_ZERO_COUNT) != 0;
            field(member.offset, member.type->name,
                  std::string(member.path) + (zero_count ? " @zero_count" : ""));
        }
    }

    void alternatives(const tlvmsg_type &type) {
        for (uint32_t i = 0; i < type.alternative_count; ++i) {
            const tlvmsg_alternative &each = type.alternatives[i];
            const bool by_length = (each.flags & TLVMSG_END_BY_LENGTH) != 0;
            field(each.offset, joined_values(each) + ": " + each.type->name,
                  std::string(each.name) + (by_length ? " @end_by_length" : ""));
        }
    }

    const tlvmsg_type &type_;
    std::ostringstream out_;
};

// Of "16/12/8", what holds for this platform's pointers and alignment, which may be the number before.
std::string for_this_platform(std::string word) {
    struct Number {
        uint64_t value;
    };
    if (word.find('/') == word.npos || word.find_first_not_of("0123456789/,") != word.npos) {
        return word;
    }
    const std::string comma = word.ends_with(',') ? "," : "";
    std::istringstream each(word.substr(0, word.size() - comma.size()));
    for (int left = sizeof(void *) == 8 ? 1 : alignof(Number) == 8 ? 2 : 3; left > 0; --left) {
        std::getline(each, word, '/');
    }
    return word + comma;
}

std::string normalized(const std::string &line) {
    std::istringstream words(line);
    std::string text;
    for (std::string word; words >> word;) {
        text += (text.empty() ? "" : " ") + for_this_platform(word);
    }
    return text;
}

// The blocks of the baseline by the name of the type, and how many there are.
std::map<std::string, std::string> baseline(size_t &count) {
    std::ifstream file(TLVMSG_INTERFACE);
    std::map<std::string, std::string> blocks;
    std::string *block = nullptr;
    for (std::string line; std::getline(file, line);) {
        if (line.empty()) {
            block = nullptr;
        } else if (line.starts_with("#") || line.starts_with("family ")) {
            continue;
        } else if (block == nullptr) {
            std::istringstream words(line.starts_with("dynamic ") ? line.substr(8) : line);
            std::string kind;
            std::string name;
            words >> kind >> name;
            block = &blocks[name.substr(0, name.find_first_of("[,"))];
            *block = normalized(line) + "\n";
            ++count;
        } else {
            *block += normalized(line) + "\n";
        }
    }
    return blocks;
}

TEST(Interface, is_what_the_descriptors_and_records_are) {
    size_t count = 0;
    const std::map<std::string, std::string> blocks = baseline(count);
    EXPECT_EQ(count, blocks.size()) << "a type stands twice";
    size_t declared = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        if (type.kind == TLVMSG_SCALAR) {
            continue;
        }
        ++declared;
        EXPECT_LT(type.tag, TLVMSG_FIRST_OWN_TAG) << "for families elsewhere";
        const auto found = blocks.find(type.name);
        ASSERT_NE(found, blocks.end()) << type.name << ": run ./dev interface";
        EXPECT_EQ(found->second, Description(type).text()) << "if this is meant: ./dev interface";
    }
    EXPECT_EQ(declared, blocks.size()) << "types are gone: ./dev interface";
}

// The type that a line defines a macro for, and which.
const tlvmsg_type *type_of_macro(const std::string &line, std::string &what) {
    for (const char *each : {"TAG", "CAPACITY", "SIZE", "MIN_SIZE", "MAX_SIZE"}) {
        const std::string begin = "#define TLVMSG_" + std::string(each) + "_";
        if (line.starts_with(begin)) {
            what = each;
            return tlvmsg_type_find(line.substr(begin.size(), line.rfind(' ') - begin.size()).c_str());
        }
    }
    return nullptr;
}

// A header states sizes twice: in the comment of a type, and as macros behind it.
TEST(Headers, state_the_sizes_that_the_descriptors_have) {
    std::map<std::string, int> seen;
    for (const auto &file : std::filesystem::directory_iterator(TLVMSG_HEADERS)) {
        std::ifstream in(file.path());
        std::string comment;
        for (std::string line; std::getline(in, line);) {
            std::string what;
            if (line == "/**") {
                comment.clear();
            } else if (line.starts_with(" * ")) {
                comment += line.substr(2);
            } else if (const tlvmsg_type *found = type_of_macro(line, what)) {
                const tlvmsg_type &type = *found;
                const uint32_t expected = what == "TAG"        ? type.tag
                                          : what == "CAPACITY" ? type.capacity
                                          : what == "MIN_SIZE" ? type.min_encoded
                                                               : type.max_encoded;
                EXPECT_EQ(line.substr(line.rfind(' ') + 1), std::to_string(expected)) << line;
                ++seen[type.name];
                std::string sizes = type.kind == TLVMSG_UNION ? "up to " : " ";
                if (type.kind != TLVMSG_UNION && type.min_encoded != type.max_encoded) {
                    sizes += std::to_string(type.min_encoded);
                    sizes += " to ";
                }
                sizes += std::to_string(type.max_encoded);
                sizes += " bytes";
                EXPECT_NE(comment.find(sizes), comment.npos) << type.name << ":" << comment;
            }
        }
    }
    EXPECT_EQ(seen.size() + 9, tlvmsg_type_count()) << "all but the scalars";
}

} // namespace
