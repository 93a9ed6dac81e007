#include "support.h"

#include <array>
#include <cstdio>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <sys/wait.h>

namespace tlvc {
namespace {

namespace fs = std::filesystem;

struct Command {
    explicit Command(const std::string &arguments, const std::string &before = "") {
        FILE *pipe = popen((before + TLVC + " " + arguments + " 2>&1").c_str(), "r");
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

const std::string good = "//! For tests.\n\nenum color = 40001\n\nstruct led = 40002 {\n    color  tint\n}\n";

TEST(CommandLine, ExitCodeTellsWhatHappened) {
    SchemaDirectory directory;
    std::string fine = directory.add("acme/leds.tlv", good);
    std::string faulty = directory.add("acme/bad.tlv", "enum colour\n");
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
    EXPECT_EQ(Command("check " + directory.path("acme").string()).exit_code, 1) << "all files in there";
    fs::create_directory(directory.path("empty"));
    EXPECT_EQ(Command("check " + directory.path("empty").string()).exit_code, 4);
    EXPECT_EQ(Command("generate --out " + fine + "/below " + fine).exit_code, 4);
}

TEST(CommandLine, GenerateLeavesUnchangedFilesAlone) {
    SchemaDirectory directory;
    directory.add("base/ids.tlv", "//! Ids.\nenum id = 1003\n");
    std::string schema = directory.add("acme/leds.tlv", "import \"../base/ids.tlv\"\n" + good.substr(16));
    std::string out = directory.path("out").string();
    std::string command = "generate --library --out " + out + " " + schema;
    ASSERT_EQ(Command(command).exit_code, 0);

    fs::path header = fs::path(out) / "include/tlvmsg/acme.h";
    fs::path other = fs::path(out) / "include/tlvmsg/base.h";
    auto long_ago = fs::last_write_time(header) - std::chrono::hours(1);
    fs::last_write_time(header, long_ago);
    fs::last_write_time(other, long_ago);
    ASSERT_EQ(Command(command).exit_code, 0);
    EXPECT_EQ(fs::last_write_time(header), long_ago);

    directory.add("acme/leds.tlv", "import \"../base/ids.tlv\"\n" + good.substr(16) + "enum extra = 1004\n");
    ASSERT_EQ(Command(command).exit_code, 0);
    EXPECT_GT(fs::last_write_time(header), long_ago);
    EXPECT_EQ(fs::last_write_time(other), long_ago);

    EXPECT_TRUE(fs::exists(out + "/src/tlvmsg.symbols"));
}

TEST(CommandLine, ImportsAreFoundBesideTheFileThenByPathThenInTheLibrary) {
    SchemaDirectory directory;
    const std::string file = directory.add("acme/fan.tlv", "import \"common/session.tlv\"\n"
                                                           "message fan_message { app_sess_hdr session }\n");
    const std::string tags = "tags " + file + " -I " + directory.path("first").string() + " -I " +
                             directory.path("second").string();
    const auto add = [&](const std::string &below, const std::string &tag) {
        directory.add(below + "/common/session.tlv", "struct app_sess_hdr = " + tag + " { uint8 a }\n");
    };
    EXPECT_EQ(Command("check " + file).output, "") << "the library's own";
    EXPECT_EQ(Command(tags).exit_code, 2) << "a directory that is not there";
    fs::create_directory(directory.path("first"));
    add("second", "40002");
    EXPECT_TRUE(Command(tags).says("40002 to 40002  used"));
    add("first", "40001");
    EXPECT_TRUE(Command(tags).says("40001 to 40001  used"));
    add("acme", "40000");
    EXPECT_TRUE(Command(tags).says("40000 to 40000  used"));
    EXPECT_TRUE(Command(tags).says("warning[W005]: the library has a family 'common'"));
}

TEST(CommandLine, GenerateWritesTheNamedFamiliesAndAStampWithWhatWasRead) {
    SchemaDirectory directory;
    directory.add("base/ids.tlv", "enum id = 1003\n");
    const std::string file =
        directory.add("ac me/leds.tlv", "import \"../base/ids.tlv\"\nstruct led = 40000 { id i }\n");
    const std::string out = directory.path("out").string();
    EXPECT_TRUE(Command("generate --out " + out + " '" + file + "'").says("error[T010]"));
    fs::rename(directory.path("ac me"), directory.path("acme"));
    const std::string stamp = out + "/stamp";
    const std::string generate =
        "generate --stamp " + stamp + " --out " + out + " " + directory.path("acme/leds.tlv").string();
    ASSERT_EQ(Command(generate).exit_code, 0);
    EXPECT_TRUE(fs::exists(out + "/src/acme_codecs.cpp"));
    for (const char *other : {"/src/base_codecs.h", "/include/tlvmsg/base.h", "/include/tlvmsg/all.h",
                              "/src/all_types.cpp", "/src/tlvmsg.symbols"}) {
        EXPECT_FALSE(fs::exists(out + other)) << other;
    }
    EXPECT_EQ(read_file(stamp + ".d"), stamp + ": \\\n  " + directory.path("acme/leds.tlv").string() +
                                           " \\\n  " + directory.path("base/ids.tlv").string() + "\n");
    fs::last_write_time(stamp, fs::last_write_time(stamp) - std::chrono::hours(1));
    const auto before = fs::last_write_time(stamp);
    ASSERT_EQ(Command(generate).exit_code, 0);
    EXPECT_GT(fs::last_write_time(stamp), before);
}

TEST(CommandLine, FormatRewritesOnlyReadableFilesAndCheckNone) {
    SchemaDirectory directory;
    std::string messy = directory.add("acme/messy.tlv", "enum   color=1001\n");
    std::string fine = directory.add("acme/fine.tlv", good);
    std::string faulty = directory.add("acme/bad.tlv", "enum   colour\n");
    Command check("format --check " + messy + " " + fine);
    EXPECT_EQ(check.exit_code, 1);
    EXPECT_EQ(check.output, messy + "\n");
    EXPECT_EQ(read_file(messy), "enum   color=1001\n");

    EXPECT_EQ(Command("format " + messy + " " + faulty).exit_code, 1);
    EXPECT_EQ(read_file(messy), "enum color = 1001\n");
    EXPECT_EQ(read_file(faulty), "enum   colour\n");
    EXPECT_EQ(Command("format --check " + messy + " " + fine).exit_code, 0);
}

TEST(CommandLine, FormatReplacesFilesAsAWhole) {
    SchemaDirectory directory;
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += fmt::format("struct   s{} = {} {{ uint8 a }}\n", i, 40000 + i);
    }
    const std::string file = directory.add("acme/a.tlv", text);
    const std::string shared = directory.add("acme/b.tlv", text);
    const std::string beside = directory.path("acme/c.tlv").string();
    fs::permissions(file, fs::perms(0640));
    EXPECT_EQ(Command("format " + file).exit_code, 0);
    EXPECT_TRUE(read_file(file).starts_with("struct s0 = 40000 {\n"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));

    directory.add("acme/a.tlv", text);
    const Command full("format " + file, "ulimit -f 4; ");
    EXPECT_EQ(full.exit_code, 4);
    EXPECT_TRUE(full.says("cannot write '" + file + "': File too large"));
    EXPECT_EQ(read_file(file), text);

    fs::create_symlink("a.tlv", directory.path("acme/link.tlv"));
    EXPECT_EQ(Command("format " + directory.path("acme/link.tlv").string()).exit_code, 0);
    EXPECT_TRUE(fs::is_symlink(directory.path("acme/link.tlv")));
    EXPECT_NE(read_file(file), text);

    fs::create_hard_link(shared, beside);
    EXPECT_TRUE(Command("format " + shared).says("has 2 hard links"));
    EXPECT_EQ(read_file(beside), text);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path("acme")), {}), 4) << "nothing is left over";

    EXPECT_THROW(tlvmsg::base::replace_file("/dev/full", text), IoError);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    tlvmsg::base::replace_file(directory.path("new/below.tlv").string(), text);
    EXPECT_EQ(read_file(directory.path("new/below.tlv").string()), text);

    // A stamp is touched, whatever it is; and a fault is told though another file is missing.
    const Command stamped("generate --stamp " + beside + " --out " + directory.path("out").string() + " " +
                          file);
    EXPECT_EQ(stamped.exit_code, 0);
    EXPECT_EQ(read_file(beside), text);
    const std::string faulty = directory.add("acme/bad.tlv", "enum   colour\n");
    for (const char *command : {"format ", "check "}) {
        const Command both(fmt::format("{}{} {}.gone", command, faulty, file));
        EXPECT_EQ(both.exit_code, 4);
        EXPECT_TRUE(both.says("bad.tlv:1:14: error[T005]") && both.says("a.tlv.gone': No such file"))
            << both.output;
    }
}

TEST(CommandLine, FilesThatAreNoneAndDetoursWorkOrAreNamed) {
    SchemaDirectory directory;
    fs::current_path(directory.path(""));
    directory.add("real/base/ids.tlv", "\xEF\xBB\xBF"
                                       "enum id = 40000\n");
    directory.add("real/acme/a.tlv", "import \"../base/ids.tlv\"\nstruct fan = 40001 { id i }\n");
    directory.add("absolute.tlv", "import \"" + directory.path("real/base/ids.tlv").string() + "\"\n");
    directory.add("nowhere.tlv", "import \"/nowhere.tlv\"\n");
    directory.add("long.tlv", "import \"" + std::string(5000, 'x') + "\"\n");
    directory.add("indirect.tlv", "import \"dangling.tlv\"\nimport \"real\"\n");
    fs::create_symlink("real/acme", "acme");
    fs::create_symlink("real/acme/a.tlv", "a.tlv");
    fs::create_symlink("somebody@host.1:2", "real/acme/.#a.tlv");
    fs::create_symlink("nowhere at all", "dangling.tlv");
    fs::create_symlink("loop.tlv", "loop.tlv");
    ASSERT_EQ(mkfifo("pipe.tlv", 0600), 0);
    const struct {
        const char *files;
        int exit_code;
        const char *says;
    } all[] = {
        {"real", 0, ""},
        {"acme/a.tlv", 0, ""},
        {"a.tlv", 0, ""},
        {"absolute.tlv", 0, ""},
        {"nowhere.tlv", 1, "nowhere.tlv:1:8: error[T008]"},
        {"long.tlv", 1, "File name too long"},
        {"indirect.tlv", 1, "a symbolic link that leads nowhere"},
        {"indirect.tlv", 1, "cannot find 'real'\n"},
        {"dangling.tlv", 4, "'dangling.tlv': it is a symbolic link that leads nowhere"},
        {"loop.tlv", 4, "'loop.tlv': Too many levels"},
        {"pipe.tlv", 4, "'pipe.tlv': it is a pipe, and nobody writes to it"},
        {"/dev/zero", 4, "'/dev/zero': it has more than"},
        {"/dev/stdin < real/acme/a.tlv", 0, ""},
        {"--help", 0, "-I DIR  "},
    };
    for (const auto &each : all) {
        const Command run(std::string("check ") + each.files);
        EXPECT_EQ(run.exit_code, each.exit_code) << each.files << ": " << run.output;
        EXPECT_TRUE(run.says(each.says)) << each.files << ": " << run.output;
    }
    fs::current_path(data_directory);
}

TEST(CommandLine, StandardInputIsAFileOfTheCurrentDirectory) {
    SchemaDirectory directory;
    directory.add("acme/ids.tlv", "enum id = 1003\n");
    const std::string messy = directory.add("acme/messy.tlv", "import \"ids.tlv\"\nstruct  s=40001{id i}\n");
    const std::string formatted = "import \"ids.tlv\"\n\nstruct s = 40001 {\n    id  i\n}\n";
    fs::current_path(directory.path("acme"));
    EXPECT_EQ(Command("format - < messy.tlv").output, formatted);
    EXPECT_EQ(Command("format --check - < messy.tlv").output, "-\n");
    EXPECT_EQ(read_file(messy), "import \"ids.tlv\"\nstruct  s=40001{id i}\n");
    EXPECT_TRUE(Command("interface - < messy.tlv").says("family acme\n"));
    EXPECT_EQ(Command("check - < messy.tlv").exit_code, 0);
    fs::current_path(directory.path(""));
    EXPECT_TRUE(Command("check - < acme/messy.tlv").says("-:1:8: error[T008]"));
    fs::current_path(data_directory);
}

TEST(CommandLine, JsonHasThePlacesOfAllFaults) {
    SchemaDirectory directory;
    fs::current_path(directory.path(""));
    directory.add("a/fine.tlv", "enum color = 40001\n");
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
    "notes": [],
    "corrections": [
      {
        "file": "a/bad.tlv",
        "line": 2,
        "column": 19,
        "end_line": 2,
        "end_column": 23,
        "replacement": "state"
      }
    ]
  })")) << run.output;
    EXPECT_TRUE(run.says("\"end_column\": 18,\n        \"message\": \"'state' has it\"\n      }\n    ],\n"));
    EXPECT_TRUE(run.says("'\\u00e9' (U+00E9) means nothing here") &&
                run.says("the byte FF means nothing here"));
    directory.add("a/odd.tlv", "import \"\xFF\"\n");
    EXPECT_TRUE(Command("check --format json a/odd.tlv").says("cannot find '\\ufffd'"))
        << "whatever the file is, its faults are ASCII";
    fs::current_path(data_directory);
}

TEST(CommandLine, WarningsAreToldOrRefusedOfTheNamedFilesAlone) {
    SchemaDirectory directory;
    directory.add("acme/ids.tlv", "enum id = 33003\nenum unused = 33004\n");
    const std::string file = directory.add("acme/s.tlv", "import \"ids.tlv\"\nstruct s = 33001 { id i }\n");
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

TEST(CommandLine, WarningsAreChosenByCodeAndSilencedAtTheirPlace) {
    SchemaDirectory directory;
    fs::current_path(directory.path(""));
    directory.add("acme/a.tlv", "/// A.\nenum a = 40001\nenum b = 40002 // tlvc: W003 because it is plain\n"
                                "struct c = 40003 { // tlvc: W006, W003 because old\n    char d\n}\n"
                                "// tlvc: W002 because of all\n/// D.\nenum d = 40004\n");
    const std::pair<const char *, const char *> all[] = {
        {"--warn", "2 W002, 3 W002, 4 W008, 5 W006, "},
        {"--warn W002", "2 W002, 3 W002, "},
        {"--warn=-W002", "4 W008, 5 W006, "},
        {"--warn W006,W002 --warn=-W002", "5 W006, "},
        {"--warn all,-W002,-W008", "5 W006, "},
        {"--strict --warn W006", "5 W006, "},
        {"", ""},
    };
    for (const auto &[options, expected] : all) {
        const Command run(fmt::format("check --format json {} acme/a.tlv", options));
        std::string found;
        for (const auto &each : nlohmann::json::parse(run.output)) {
            found += fmt::format("{} {}, ", each["line"].get<int>(), each["code"].get<std::string>());
        }
        EXPECT_EQ(found, expected) << options;
        EXPECT_EQ(run.exit_code, std::string_view(options).starts_with("--strict") ? 1 : 0) << options;
    }
    EXPECT_EQ(Command("check --warn W099 acme/a.tlv").exit_code, 2);
    EXPECT_EQ(Command("check --warn -- acme/a.tlv").exit_code, 0);
    directory.add("acme/a,b.tlv", "enum a = 5\n");
    EXPECT_EQ(Command("check --format github acme/a,b.tlv").output,
              "::error file=acme/a%2Cb.tlv,line=1,col=10,title=T016 tag out of range::a tag is a number from "
              "1001 to 65535\n");
    fs::current_path(data_directory);
}

TEST(CommandLine, FixCorrectsNamedFilesAndTellsWhatIsLeft) {
    SchemaDirectory directory;
    const std::string mark = "\xEF\xBB\xBF";
    const std::string other = directory.add("acme/other.tlv", "enum ids = 40009;\n");
    const std::string file = directory.add("acme/a.tlv", mark + R"(//! A.
#include "ids.tlv"
strcut a = 40001 { uint16_t n; ids i,unsigned long x };
struct c = 40006 { notes l }
import "gone/pair.tlv"
message m = 7 { a a, pair p, app_sess_hdr s }
struct b 40002 { gone g }
dynamic bytes notes counted by uint8
)");
    directory.add("acme/ids.tlv", "enum ids = 40003\n");
    directory.add("acme/pair.tlv", "struct pair = 40004 { uint8 a  uint8 b }\n");
    const Command fixed("check --fix " + file);
    EXPECT_EQ(fixed.exit_code, 1);
    EXPECT_TRUE(fixed.says("type 'unsigned long'") && fixed.says("type 'gone'") && fixed.says("\n2 errors\n"))
        << fixed.output;
    EXPECT_EQ(read_file(file), mark + R"(//! A.

import "common/session.tlv"
import "pair.tlv"
import "ids.tlv"
struct a = 40001 { uint16 n ids i unsigned long x }
struct c = 40006 { uint8 count
    notes l }

message m  { a a pair p app_sess_hdr s }
struct b = 40002 { gone g }
dynamic bytes notes counted by uint8
)");
    const std::string unclear = directory.add("acme/unclear.tlv", "struct x = 40005 { uint8 a, b }\n");
    EXPECT_FALSE(Command("check --fix " + unclear).says("mended"));
    EXPECT_EQ(Command("check --fix - < " + file).exit_code, 2);
    const std::string user = directory.add("acme/user.tlv", "import \"other.tlv\"\n");
    EXPECT_TRUE(Command("check --fix " + user).says("1 error\n"));
    EXPECT_EQ(read_file(other), "enum ids = 40009;\n") << "which is only imported";
}

TEST(CommandLine, TagsAreUsedHereOrByTheLibraryOrFree) {
    SchemaDirectory directory;
    const std::string file = directory.add("acme/s.tlv", "enum d = 32767\nenum e = 32768\nenum f = 65535\n");
    const Command tags("tags " + file);
    EXPECT_EQ(tags.output.find(" 1001 to  1202  used\n"), 0u) << tags.output;
    EXPECT_TRUE(tags.says("free\n"
                          "32767 to 32767  used\n"
                          "32768 to 32768  used, for families of your own\n"
                          "32769 to 65534  free, for families of your own\n"
                          "65535 to 65535  used, for families of your own\n"));
    const std::string out = " --out " + directory.path("out").string() + " " + file;
    EXPECT_TRUE(Command("check " + file).says("error[T048]: tag 32767 is one of the library's"));
    EXPECT_EQ(Command("generate" + out).exit_code, 1);
    EXPECT_EQ(Command("generate --library" + out).output, "") << "which is whoever builds it";
    EXPECT_EQ(Command("interface " + file).exit_code, 0);
}

TEST(CommandLine, CompareExitsAsDiffDoes) {
    SchemaDirectory directory;
    const std::string old_file = directory.add("old/acme/leds.tlv", good);
    const std::string new_file = directory.add("new/acme/leds.tlv", good + "enum color_of_night = 1003\n");
    const std::string old_text = directory.add("old.txt", Command("interface " + old_file).output);
    const std::string above = directory.path("new").string();
    EXPECT_EQ(Command("compare " + old_text + " " + above).exit_code, 0);
    EXPECT_EQ(Command("compare " + old_text + " " + above).output, "");
    EXPECT_EQ(
        Command("compare --all " + old_file + " " + above).output,
        new_file +
            ":8:6: safe[C002]: color_of_night (in no message): is new: an enumeration; nobody depends on it "
            "yet\n");
    EXPECT_TRUE(Command("compare --format json " + old_text + " " + above)
                    .says("\"code\": \"C002\",\n    \"severity\": \"safe\""));
    EXPECT_EQ(Command("compare " + above + " " + old_text).exit_code, 1);
    EXPECT_EQ(
        Command("compare --level wire --level source " + above + " " + old_text).output,
        new_file +
            ":8:6: breaks[C001] wire, source: color_of_night (in no message): is gone: an enumeration; peers "
            "and programs that have it still use it\n" +
            new_file +
            ":8:6: breaks[C030] wire: color_of_night (in no message): is gone: tag 1003; nothing keeps it "
            "from "
            "coming back with another meaning\n");
    const std::string reserved =
        directory.add("reserved/acme/leds.tlv", good + "reserved 1003, 40005 to 40006\n");
    directory.add("reserved.txt", Command("interface " + reserved).output);
    const std::string back =
        directory.add("back/acme/leds.tlv", good + "enum q = 40006\nreserved 1003, 40005\n");
    EXPECT_TRUE(Command("tags " + reserved).says("40005 to 40006  reserved, for families"));
    EXPECT_EQ(Command("compare " + directory.path("reserved.txt").string() + " " + back).output,
              directory.path("reserved.txt").string() +
                  ":8:16: breaks[C032] wire: 40006: is gone: reserved 40006; 'q' has 40006 now\n");
    directory.add("old.txt", "#\nfamily acme\nenum color = 1001, 12 bytes\nenum color = 1002\n");
    EXPECT_TRUE(Command("compare " + old_text + " " + above).says(old_text + ":4:6: error[T014]"));
    directory.add("new/acme/more.tlv", "enum color_of_day = 1004\n");
    const std::string spare = directory.add("spare/a.tlv", good);
    for (const std::string &one :
         {fmt::format("- {} < {}", above, old_file), fmt::format("{} {}", spare, above)}) {
        EXPECT_EQ(Command("compare " + one).output, "")
            << "what it holds is all still there, in whatever family";
    }
    for (const std::string &trouble :
         {fmt::format("{} {}", old_text, above), above, fmt::format("{0} {0}.gone", above),
          fmt::format("--level abi {0} {0}", above)}) {
        EXPECT_EQ(Command("compare " + trouble).exit_code, 2) << trouble;
    }
}

TEST(CommandLine, CompareTakesPairsAndAllowsWhatAFileSays) {
    SchemaDirectory directory;
    fs::current_path(directory.path(""));
    directory.add("old/acme/a.tlv", "struct led = 40002 { uint8 tint }\n");
    directory.add("new/acme/a.tlv", "struct led = 40002 { uint8 hue }\n");
    directory.add("old/fan/a.tlv", "struct fan = 40003 { uint8 n  uint8 m }\n");
    directory.add("new/fan/a.tlv", "struct fan = 40004 { uint8 n }\nreserved 40003\n");
    directory.add("old.txt", Command("interface old/acme").output);
    const char *const allowed =
        "# reviewed\nC014 led.hue  as all was\r\n\nC007 fan.m unread\nC005 fan unsent\n";
    const struct {
        const char *sides;
        std::string exceptions;
        int exit_code;
        std::string says;
    } all[] = {
        {"old new", "", 1, "C014 C005 C007 "},
        {"old.txt new/acme old/fan new/fan", "", 1, "C014 C005 C007 "},
        {"old.txt new/acme old/fan new/fan", allowed, 0, ""},
        {"old new", allowed, 0, ""},
        {"--level wire old new", allowed, 0, ""},
        {"old new", "C005 fan unsent\nC007 fan.m\n", 1, "C014 C007 C029 "},
        {"old new", std::string(allowed) + "C999 fan x\nC002 fan x\nC014 fan x\n", 1, "C029 C029 C029 "},
    };
    for (const auto &each : all) {
        directory.add("exceptions.txt", each.exceptions);
        const Command run(fmt::format("compare --format json --exceptions exceptions.txt {}", each.sides));
        std::string found;
        for (const auto &finding : nlohmann::json::parse(run.output)) {
            found += finding["code"].get<std::string>() + " ";
        }
        EXPECT_EQ(found, each.says) << each.sides;
        EXPECT_EQ(run.exit_code, each.exit_code) << each.sides;
    }
    EXPECT_EQ(
        Command("compare --format github --level layout old new").output,
        "::error file=new/fan/a.tlv,line=1,col=8,title=C007 member removed::breaks layout: fan.m (in no "
        "message): is gone: uint8; old decoders miss it, and what stands behind it\n");
    EXPECT_EQ(Command("compare old new old").exit_code, 2);
    fs::current_path(data_directory);
}

TEST(CommandLine, CompareLooksForImportsOnEachSide) {
    SchemaDirectory directory;
    for (const auto &[side, number] : {std::pair("old", "uint16"), std::pair("new", "uint32")}) {
        directory.add(fmt::format("{}/base/a.tlv", side),
                      fmt::format("struct a = 1001 {{ {} n }}\n", number));
        directory.add(fmt::format("{}/acme/b.tlv", side), "import \"base/a.tlv\"\nmessage m { a a }\n");
    }
    const auto compare = [&, root = directory.path("").string()](const std::string &old_import) {
        return Command(fmt::format("compare --old-import {0}{1} --new-import {0}new {0}old/acme {0}new/acme",
                                   root, old_import));
    };
    EXPECT_TRUE(compare("old").says("C013"));
    EXPECT_FALSE(compare("old").says("C028"));
    EXPECT_TRUE(
        compare("new").says("new/base/a.tlv:1:1: unknown[C028]: this file is read for OLD and for NEW"));
    EXPECT_EQ(compare("new").exit_code, 0);
    EXPECT_TRUE(Command("compare -I . a b").says("say --old-import or --new-import"));
}

TEST(CommandLine, ExplainTakesCodesInAnyCase) {
    EXPECT_EQ(Command("explain t010 c001").output,
              Command("explain T010").output + Command("explain C001").output);
    EXPECT_EQ(Command("lsp --stdio </dev/null").exit_code, Command("lsp </dev/null").exit_code);
}

} // namespace
} // namespace tlvc
