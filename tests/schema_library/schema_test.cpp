// Types that are loaded are the built-in ones in every respect, and what is none is told, whatever it is.
#include "forms/failing_new.h"

#include <tlvmsg/forms.h>
#include <tlvmsg/schema.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <pthread.h>
#include <sstream>

namespace tlvmsg_test {

namespace {

// Everything that a descriptor says, and the names of what it refers to.
std::string description(const tlvmsg_type &type) {
    std::ostringstream out;
    out << type.name << '|' << type.family << '|' << type.section << '|' << type.doc << '|' << type.kind
        << ' ' << type.tag << ' ' << type.flags << ' ' << type.size << ' ' << type.alignment << ' '
        << type.min_encoded << ' ' << type.max_encoded << ' ' << tlvmsg_fingerprint(&type) << '\n';
    for (uint32_t i = 0; i < type.enumerator_count; ++i) {
        const tlvmsg_enumerator &each = type.enumerators[i];
        out << each.name << '|' << each.doc << '|' << each.value << '\n';
    }
    for (uint32_t i = 0; i < type.member_count; ++i) {
        const tlvmsg_member &each = type.members[i];
        out << each.path << '|' << each.doc << '|' << each.type->name << ' ' << each.offset << ' '
            << each.flags << '\n';
    }
    if (type.element != nullptr) {
        out << type.element->name << ' ' << type.capacity << ' ' << type.count_width << ' '
            << type.items_offset << '\n';
    }
    for (uint32_t i = 0; i < type.alternative_count; ++i) {
        const tlvmsg_alternative &each = type.alternatives[i];
        out << each.name << '|' << each.type->name << ' ' << each.offset << ' ' << each.flags;
        std::for_each(each.values, each.values + each.value_count,
                      [&](uint32_t value) { out << ' ' << value; });
        out << '\n';
    }
    if (type.selector != nullptr) {
        out << type.selector->name << '|' << type.selector_name << '|' << type.selector_offset << '\n';
    }
    return out.str();
}

using Sources = std::vector<tlvmsg_schema_source>;

tlvmsg_schema_source text(const char *path, std::string_view said) {
    return {path, said.data(), said.size(), {}};
}
tlvmsg_schema_source file(const char *path) { return {path, nullptr, 0, {}}; }

struct Loaded {
    explicit Loaded(const Sources &sources, const tlvmsg_schema_options *options = nullptr)
        : done(tlvmsg_schema_load(sources.data(), sources.size(), options, &schema)) {}
    ~Loaded() { tlvmsg_schema_free(schema); }
    Loaded(const Loaded &) = delete;

    // "fan.tlv:1:2-1:5 T012 message (help)", a line each.
    std::string faults() const {
        std::ostringstream out;
        size_t count = 0;
        const tlvmsg_schema_fault *each = tlvmsg_schema_faults(schema, &count);
        for (; count > 0; ++each, --count) {
            out << each->file << ':' << each->line << ':' << each->column << '-' << each->end_line << ':'
                << each->end_column << ' ' << each->severity << ' ' << each->code << ' ' << each->message
                << " (" << each->help << ")\n";
        }
        return out.str();
    }

    tlvmsg_schema *schema = nullptr;
    bool done;
};

TEST(Schema, HasTheTypesThatWereCompiled) {
    const Loaded loaded({file(TLVMSG_SCHEMA)});
    const tlvmsg_type_set *const types = tlvmsg_schema_types(loaded.schema);
    ASSERT_TRUE(loaded.done) << loaded.faults();
    ASSERT_EQ(tlvmsg_type_set_count(types), tlvmsg_type_count());
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        EXPECT_EQ(description(*tlvmsg_type_set_at(types, i)), description(*tlvmsg_type_at(i)));
    }
}

constexpr std::string_view fan = "import \"../ids/ids.tlv\"\nstruct acme_fan = 40000 { acme_id id }\n";
constexpr std::string_view ids = "enum acme_id = 40001";

// Texts, files and both together; where there is a text no file is read, and no directory either.
TEST(Schema, TakesTextsForFiles) {
    const std::string directory = testing::TempDir() + "schema_library/";
    for (const char *const each : {"acme", "ids/ids.tlv"}) {
        std::filesystem::create_directories(directory + each);
    }
    std::ofstream(directory + "acme/fan.tlv") << fan;
    const std::string on_disk = directory + "acme/fan.tlv", imported = directory + "acme/../ids/ids.tlv";
    const auto loads = [](const Sources &sources, const tlvmsg_schema_options *options = nullptr) {
        const Loaded loaded(sources, options);
        const tlvmsg_type *const type = tlvmsg_type_set_find(tlvmsg_schema_types(loaded.schema), "acme_fan");
        EXPECT_EQ(loaded.done, type != nullptr) << loaded.faults();
        EXPECT_EQ(tlvmsg_type_find("acme_fan"), nullptr);
        return loaded.done ? loaded.faults() + type->family : loaded.faults();
    };
    EXPECT_EQ(loads({file(on_disk.c_str()), text(imported.c_str(), ids)}), "acme");
    EXPECT_EQ(loads({text("no/dir/fan.tlv", fan), text("no/ids/ids.tlv", ids)}), "dir");
    EXPECT_EQ(loads({text("-", "struct acme_fan = 40000 { uint8 a }")}).find(':'), std::string::npos);
    const char *const below[] = {"no/ids/deep"};
    const tlvmsg_schema_options options{below, 1, nullptr, true, {}};
    EXPECT_EQ(loads({text("no/dir/fan.tlv", fan), text("no/ids/ids.tlv", ids)}, &options),
              "no/dir/fan.tlv:2:8-2:16 1 W003 'acme_fan' has no documentation ()\n"
              "no/ids/ids.tlv:1:6-1:13 1 W003 'acme_id' has no documentation ()\ndir");
}

// What is wrong with texts and arguments, and what the worst of them do within a small stack.
TEST(Schema, TellsWhatIsWrong) {
    std::string chain, wide(300, 'x');
    for (int i = 0; i < 20'000; ++i) {
        const std::string type = "acme_" + std::to_string(i), next = "acme_" + std::to_string(i + 1);
        chain.append("struct ").append(type).append(" = ").append(std::to_string(32768 + i));
        chain.append(" { ").append(next).append(" a }\n");
    }
    const std::string deep = chain + "enum acme_20000 = 60000";
    const std::string round = chain + "struct acme_20000 = 60000 { acme_0 a }";
    const std::string no_schema(1'000'000, '\x80');
    const std::string too_long(64 << 20 | 1, ' ');
    const std::string odd_path = "/" + wide + "\xFF\n/" + wide + ".tlv";
    const char *const null = nullptr;
    const tlvmsg_schema_options reserved{nullptr, 0, nullptr, false, {0, 0, 1}},
        no_path{&null, 1, nullptr, false, {}}, not_there{nullptr, 0, "/nowhere", false, {}},
        installed{nullptr, 0, TLVMSG_SCHEMA, false, {}};
    const struct {
        Sources sources;
        const tlvmsg_schema_options *options;
        const char *said; // somewhere in it
    } rows[] = {
        {{text("a/a.tlv", "struct a = 40000 { speeed c }\nenum speed = 40001")},
         nullptr,
         "a/a.tlv:1:20-1:26 0 T012 type 'speeed' is not defined (did you mean 'speed'?)\n"},
        {{text("a/a.tlv", "enum a = 40000\nenum b = 40000")},
         nullptr,
         "a/a.tlv:1:10-1:15 2 T015 'a' has it ()\n"},
        // NOLINTNEXTLINE(misc-misleading-bidirectional): what turns a line around is told by its number
        {{text("a/a.tlv", "import \"\xE2\x80\xAE\x01\"")}, nullptr, "cannot find '<U+202E><U+0001>' ("},
        {{text("a/a.tlv", "import \"b.tlv\""), file("nowhere.tlv")},
         nullptr,
         ":0:0-0:0 0 cannot-read cannot read"},
        {{text("a/a.tlv", no_schema)}, nullptr, "a/a.tlv:1:1-"},
        {{text("a/a.tlv", deep)}, nullptr, " T045 "},
        {{text("a/a.tlv", round)}, nullptr, " T037 "},
        {{text(odd_path.c_str(), "enum x = 40000")}, &installed, " T010 "},
        {{text("", "enum x = 40000")}, nullptr, "cannot-read a path is empty"},
        {{text("/", "enum x = 40000")}, nullptr, " T010 "},
        {{text("a/a.tlv", too_long)}, nullptr, "cannot-read 'a/a.tlv' has more than 67108864 bytes"},
        {{text("a/a.tlv", ""), text("a/b/../a.tlv", "")}, nullptr, "duplicate-path"},
        {{{"a", nullptr, 0, {0, 1}}}, nullptr, "reserved-word a reserved word of 'sources'"},
        {{{"a", nullptr, 1, {}}}, nullptr, "null-argument 'text'"},
        {{file(nullptr)}, nullptr, "null-argument 'path'"},
        {{}, &reserved, "reserved-word a reserved word of 'options'"},
        {{}, &no_path, "null-argument 'import_paths'"},
        {{}, &not_there, "cannot-read cannot read '/nowhere'"},
    };
    const auto check = [](void *row) -> void * {
        const auto &[sources, options, said] = *static_cast<decltype(&rows[0])>(row);
        const Loaded loaded(sources, options);
        EXPECT_FALSE(loaded.done);
        EXPECT_EQ(tlvmsg_type_set_count(tlvmsg_schema_types(loaded.schema)), 0u);
        EXPECT_NE(loaded.faults().find(said), std::string::npos)
            << loaded.faults().substr(0, 1000) << "lacks " << said;
        EXPECT_LE(loaded.faults().size(), 200'000u);
        return nullptr;
    };
    pthread_attr_t small;
    ASSERT_EQ(pthread_attr_init(&small), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&small, TLVMSG_STACK), 0);
    for (const auto &row : rows) {
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, &small, check, const_cast<void *>(static_cast<const void *>(&row))),
                  0);
        pthread_join(thread, nullptr);
    }
    EXPECT_FALSE(tlvmsg_schema_load(nullptr, 0, nullptr, nullptr));
}

// Each allocation fails once, of a schema and of faults: the result is the usual one, or none.
TEST(Schema, SurvivesWithoutMemory) {
    for (const std::string_view said : {ids, std::string_view("enum b = 40002")}) {
        const Sources sources{text("no/acme/fan.tlv", fan), text("no/ids/ids.tlv", said)};
        const bool usual = Loaded(sources).done;
        size_t failed = 0;
        for (size_t nth = 1, left = 0; left == 0; ++nth) {
            failing_new = nth;
            tlvmsg_schema *schema = nullptr;
            const bool done = tlvmsg_schema_load(sources.data(), sources.size(), nullptr, &schema);
            left = std::exchange(failing_new, 0);
            const tlvmsg_schema_fault *const faults = tlvmsg_schema_faults(schema, nullptr);
            failed += schema == nullptr ? 1 : 0;
            EXPECT_TRUE(schema == nullptr ? !done && std::string_view(faults->code) == "out-of-memory"
                                          : done == usual)
                << nth << ": " << faults->message;
            tlvmsg_schema_free(schema);
        }
        EXPECT_GT(failed, 100u);
    }
}

} // namespace

} // namespace tlvmsg_test
