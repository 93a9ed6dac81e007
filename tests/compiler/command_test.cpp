#include "changes.h"
#include "support.h"

#include <array>
#include <cstdio>
#include <sys/wait.h>

namespace tlvc {
namespace {

namespace fs = std::filesystem;

struct Command {
    explicit Command(const std::string &arguments) {
        FILE *pipe = popen((std::string(TLVC) + " " + arguments + " 2>&1").c_str(), "r");
        std::array<char, 4096> buffer;
        for (size_t n = 0; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
            output.append(buffer.data(), n);
        }
        int status = pclose(pipe);
        exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    bool says(const std::string &text) const { return output.find(text) != std::string::npos; }

    std::string output;
    int exit_code = -1;
};

const std::string good = "//! For tests.\n\nenum color = 1001\n\nstruct led = 1002 {\n    color  tint\n}\n";

TEST(CommandLine, exit_code_tells_what_happened) {
    SchemaDirectory directory;
    std::string fine = directory.add("voice/leds.tlv", good);
    std::string faulty = directory.add("voice/bad.tlv", "enum colour\n");
    EXPECT_EQ(Command("check " + fine).exit_code, 0);
    EXPECT_EQ(Command("check " + fine).output, "");
    EXPECT_EQ(Command("check " + faulty).exit_code, 1);
    EXPECT_TRUE(Command("check " + faulty).says("1 error\n"));
    EXPECT_EQ(Command("generate --out " + directory.path("out").string() + " " + faulty).exit_code, 1);
    EXPECT_FALSE(fs::exists(directory.path("out")));
    for (const char *usage : {"", "check", "compile x", "generate x", "explain T999", "check --nonsense x"}) {
        EXPECT_EQ(Command(usage).exit_code, 2) << usage;
    }
    EXPECT_EQ(Command("--help").exit_code, 0);
    EXPECT_EQ(Command("check " + fine + ".gone").exit_code, 4);
    EXPECT_EQ(Command("check " + directory.path("voice").string()).exit_code, 1) << "all files in there";
    fs::create_directory(directory.path("empty"));
    EXPECT_EQ(Command("check " + directory.path("empty").string()).exit_code, 4);
    EXPECT_EQ(Command("generate --out " + fine + "/below " + fine).exit_code, 4);
}

TEST(CommandLine, generate_leaves_unchanged_files_alone) {
    SchemaDirectory directory;
    directory.add("common/ids.tlv", "//! Ids.\nenum id = 1003\n");
    std::string schema = directory.add("voice/leds.tlv", "import \"../common/ids.tlv\"\n" + good.substr(16));
    std::string out = directory.path("out").string();
    std::string command = "generate --library --out " + out + " " + schema;
    ASSERT_EQ(Command(command).exit_code, 0);

    fs::path header = fs::path(out) / "include/tlvmsg/voice.h";
    fs::path other = fs::path(out) / "include/tlvmsg/common.h";
    auto long_ago = fs::last_write_time(header) - std::chrono::hours(1);
    fs::last_write_time(header, long_ago);
    fs::last_write_time(other, long_ago);
    ASSERT_EQ(Command(command).exit_code, 0);
    EXPECT_EQ(fs::last_write_time(header), long_ago);

    directory.add("voice/leds.tlv",
                  "import \"../common/ids.tlv\"\n" + good.substr(16) + "enum extra = 1004\n");
    ASSERT_EQ(Command(command).exit_code, 0);
    EXPECT_GT(fs::last_write_time(header), long_ago);
    EXPECT_EQ(fs::last_write_time(other), long_ago);

    EXPECT_TRUE(fs::exists(out + "/src/tlvmsg.map"));
}

TEST(CommandLine, imports_are_found_beside_the_file_then_by_path_then_in_the_library) {
    SchemaDirectory directory;
    const std::string file = directory.add("acme/fan.tlv", "import \"common/session.tlv\"\n"
                                                           "message fan_message { app_sess_hdr session }\n");
    const std::string tags = "tags " + file + " -I " + directory.path("first").string() + " -I " +
                             directory.path("second").string();
    const auto add = [&](const std::string &below, const std::string &tag) {
        directory.add(below + "/common/session.tlv", "struct app_sess_hdr = " + tag + " { uint8 a }\n");
    };
    EXPECT_TRUE(Command("tags " + file).says(" 1001 to  1003  used")) << "the library's own";
    add("second", "1202");
    EXPECT_TRUE(Command(tags).says(" 1202 to  1202  used"));
    add("first", "1201");
    EXPECT_TRUE(Command(tags).says(" 1201 to  1201  used"));
    add("acme", "1200");
    EXPECT_TRUE(Command(tags).says(" 1200 to  1200  used"));
    EXPECT_TRUE(Command("compare " + file + " " + file).output.empty());
}

TEST(CommandLine, generate_writes_the_named_families_and_a_stamp_with_what_was_read) {
    SchemaDirectory directory;
    directory.add("common/ids.tlv", "enum id = 1003\n");
    const std::string file =
        directory.add("ac me/leds.tlv", "import \"../common/ids.tlv\"\nstruct led = 40000 { id i }\n");
    const std::string out = directory.path("out").string();
    EXPECT_TRUE(Command("generate --out " + out + " '" + file + "'").says("error[T010]"));
    fs::rename(directory.path("ac me"), directory.path("acme"));
    const std::string stamp = out + "/stamp";
    const std::string generate =
        "generate --stamp " + stamp + " --out " + out + " " + directory.path("acme/leds.tlv").string();
    ASSERT_EQ(Command(generate).exit_code, 0);
    EXPECT_TRUE(fs::exists(out + "/src/acme_codecs.cpp"));
    for (const char *other : {"/src/common_codecs.h", "/include/tlvmsg/common.h", "/include/tlvmsg/all.h",
                              "/src/all_types.cpp", "/src/tlvmsg.map"}) {
        EXPECT_FALSE(fs::exists(out + other)) << other;
    }
    EXPECT_EQ(read_file(stamp + ".d"), stamp + ": \\\n  " + directory.path("acme/leds.tlv").string() +
                                           " \\\n  " + directory.path("common/ids.tlv").string() + "\n");
    fs::last_write_time(stamp, fs::last_write_time(stamp) - std::chrono::hours(1));
    const auto before = fs::last_write_time(stamp);
    ASSERT_EQ(Command(generate).exit_code, 0);
    EXPECT_GT(fs::last_write_time(stamp), before);
}

TEST(CommandLine, format_rewrites_only_readable_files_and_check_none) {
    SchemaDirectory directory;
    std::string messy = directory.add("voice/messy.tlv", "enum   color=1001\n");
    std::string fine = directory.add("voice/fine.tlv", good);
    std::string faulty = directory.add("voice/bad.tlv", "enum   colour\n");
    Command check("format --check " + messy + " " + fine);
    EXPECT_EQ(check.exit_code, 1);
    EXPECT_EQ(check.output, messy + "\n");
    EXPECT_EQ(read_file(messy), "enum   color=1001\n");

    EXPECT_EQ(Command("format " + messy + " " + faulty).exit_code, 1);
    EXPECT_EQ(read_file(messy), "enum color = 1001\n");
    EXPECT_EQ(read_file(faulty), "enum   colour\n");
    EXPECT_EQ(Command("format --check " + messy + " " + fine).exit_code, 0);
}

TEST(CommandLine, standard_input_is_a_file_of_the_current_directory) {
    SchemaDirectory directory;
    directory.add("voice/ids.tlv", "enum id = 1003\n");
    const std::string messy = directory.add("voice/messy.tlv", "import \"ids.tlv\"\nstruct  s=1001{id i}\n");
    const std::string formatted = "import \"ids.tlv\"\n\nstruct s = 1001 {\n    id  i\n}\n";
    fs::current_path(directory.path("voice"));
    EXPECT_EQ(Command("format - < messy.tlv").output, formatted);
    EXPECT_EQ(Command("format --check - < messy.tlv").output, "-\n");
    EXPECT_EQ(read_file(messy), "import \"ids.tlv\"\nstruct  s=1001{id i}\n");
    EXPECT_TRUE(Command("interface - < messy.tlv").says("family voice\n"));
    EXPECT_EQ(Command("check - < messy.tlv").exit_code, 0);
    fs::current_path(directory.path(""));
    EXPECT_TRUE(Command("check - < voice/messy.tlv").says("-:1:8: error[T008]"));
    fs::current_path(data_directory);
}

TEST(CommandLine, json_has_the_places_of_all_faults) {
    SchemaDirectory directory;
    fs::current_path(directory.path(""));
    directory.add("a/fine.tlv", "enum color = 1001\n");
    directory.add("a/bad.tlv", "enum state = 1001\nstruct s = 1001 { stat \xC3\xA9\xFF x }\n");
    EXPECT_EQ(Command("check --format json a/fine.tlv").output, "[]\n");
    const Command run("check --format json a/bad.tlv");
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_TRUE(run.says(R"(  {
    "file": "a/bad.tlv",
    "line": 2,
    "column": 19,
    "end_line": 2,
    "end_column": 23,
    "code": "T012",
    "severity": "error",
    "message": "type 'stat' is not defined",
    "help": "did you mean 'state'?",
    "notes": []
  })")) << run.output;
    EXPECT_TRUE(run.says("\"end_column\": 18,\n        \"message\": \"'state' has it\"\n      }\n    ]\n"));
    EXPECT_TRUE(run.says("'\xC3\xA9' means nothing here") && run.says("'\xEF\xBF\xBD' means nothing here"))
        << "whatever the file is, its faults are UTF-8";
    fs::current_path(data_directory);
}

TEST(CommandLine, warnings_are_told_or_refused_of_the_named_files_alone) {
    SchemaDirectory directory;
    directory.add("voice/ids.tlv", "enum id = 33003\nenum unused = 33004\n");
    const std::string file = directory.add("voice/s.tlv", "import \"ids.tlv\"\nstruct s = 33001 { id i }\n");
    const std::string generate = "generate --out " + directory.path("out").string() + " ";
    EXPECT_EQ(Command("check " + file).output, "");
    const Command warned("check --warn " + file);
    EXPECT_EQ(warned.exit_code, 0);
    EXPECT_TRUE(warned.says("s.tlv:2:8: warning[W003]: 's' has no documentation\n"));
    EXPECT_TRUE(warned.says("\n1 warning\n")) << warned.output;
    EXPECT_TRUE(Command("check --warn --format json " + file).says(R"("severity": "warning")"));
    EXPECT_TRUE(Command("check --strict " + file).says("error[W003]"));
    EXPECT_EQ(Command(generate + "--strict " + file).exit_code, 1);
    EXPECT_FALSE(fs::exists(directory.path("out")));
    EXPECT_EQ(Command(generate + "--warn " + file).exit_code, 0);
    EXPECT_TRUE(fs::exists(directory.path("out")));
}

TEST(CommandLine, tags_are_used_or_free) {
    SchemaDirectory directory;
    const std::string file = directory.add("voice/s.tlv", "enum a = 1001\nenum b = 1002\nenum c = 1005\n"
                                                          "enum d = 32767\nenum e = 32768\nenum f = 65535\n");
    EXPECT_EQ(Command("tags " + file).output, " 1001 to  1002  used\n"
                                              " 1003 to  1004  free\n"
                                              " 1005 to  1005  used\n"
                                              " 1006 to 32766  free\n"
                                              "32767 to 32767  used\n"
                                              "32768 to 32768  used, for families of your own\n"
                                              "32769 to 65534  free, for families of your own\n"
                                              "65535 to 65535  used, for families of your own\n");
}

TEST(CommandLine, compare_exits_as_diff_does) {
    SchemaDirectory directory;
    const std::string old_file = directory.add("old/voice/leds.tlv", good);
    const std::string new_file = directory.add("new/voice/leds.tlv", good + "enum color_of_night = 1003\n");
    const std::string old_text = directory.add("old.txt", Command("interface " + old_file).output);
    const std::string above = directory.path("new").string();
    EXPECT_EQ(Command("compare " + old_text + " " + above).exit_code, 0);
    EXPECT_EQ(Command("compare " + old_text + " " + above).output, "");
    EXPECT_EQ(Command("compare --all " + old_file + " " + above).output,
              new_file +
                  ":8:6: safe[C002]: color_of_night: is new: an enumeration; nobody depends on it yet\n");
    EXPECT_TRUE(Command("compare --format json " + old_text + " " + above)
                    .says("\"id\": \"C002\",\n    \"severity\": \"safe\""));
    EXPECT_EQ(Command("compare " + above + " " + old_text).exit_code, 1);
    EXPECT_EQ(
        Command("compare --level wire --level source " + above + " " + old_text).output,
        new_file +
            ":8:6: breaks[C001] wire, source: color_of_night: is gone: an enumeration; peers and programs "
            "that have it still use it\n");
    directory.add("old.txt", "#\nfamily voice\nenum color = 1001, 12 bytes\nenum color = 1002\n");
    EXPECT_TRUE(Command("compare " + old_text + " " + above).says(old_text + ":4:6: error[T014]"));
    directory.add("new/voice/more.tlv", "enum color_of_day = 1004\n");
    for (const std::string &one :
         {"- " + above + " < " + old_file, directory.add("spare/a.tlv", good) + " " + above}) {
        EXPECT_EQ(Command("compare " + one).output, "")
            << "what it holds is all still there, in whatever family";
    }
    for (const std::string &trouble :
         {fmt::format("{} {}", old_text, above), above, fmt::format("{0} {0}.gone", above),
          fmt::format("--level abi {0} {0}", above)}) {
        EXPECT_EQ(Command("compare " + trouble).exit_code, 2) << trouble;
    }
}

TEST(CommandLine, explain_knows_every_code) {
    for (const Fault *each : fault::all) {
        Command run("explain " + std::string(each->code));
        EXPECT_EQ(run.exit_code, 0);
        EXPECT_TRUE(run.says(fmt::format("{}: {}", each->code, each->title())) &&
                    run.says(std::string(each->explanation())));
    }
    for (const Rule *each : rules) {
        EXPECT_TRUE(Command("explain " + std::string(each->code))
                        .says(fmt::format("{}: {}", each->code, each->text)));
    }
}

} // namespace
} // namespace tlvc
