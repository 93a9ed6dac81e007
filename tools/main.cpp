// tlv: TLV messages from the shell.
#include "base/files.h"
#include "tools/commands/commands.h"
#include "tools/faults/faults.h"
#include "tools/types/lookup.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

namespace {

using namespace tlvmsg::cli;
using namespace tlvmsg::tool;

const Help help{
    "Read, write, check and compare TLV messages",
    {"Messages come from files or, as -, from standard input: as raw bytes, or as hex text in any usual "
     "spelling: plain, spaced, with 0x, colons or commas, as xxd, hexdump -C, od -tx1 or tshark -x print it, "
     "as a C array, as bytes or a list of Python, as base64, behind what a log writes, or as tlv annotate "
     "prints it. Dumps of whole frames are read as captures are, but for --in hex. Which one it is, is "
     "detected: text is hex, "
     "and everything else is raw, for no message begins with a byte that text contains. --in raw and --in "
     "hex override that. A newline at the end never matters.",
     "Whatever comes in passes the bounded library first: no input makes tlv read or write where it should "
     "not. Errors name the member, the byte, what was found and what is allowed; tlv explain says more about "
     "their codes."},
    {{"tlv guess dump.txt", "find out what the bytes in a hex dump are"},
     {"tlv annotate -t analogbri_led_control_req_message dump.txt", "explain them, byte for byte"},
     {"tlv decode -t analogbri_led_control_req_message dump.txt > m.json", "turn them into JSON to change"},
     {"tlv encode -t analogbri_led_control_req_message m.json > m.bin", "and back into bytes"},
     {"tlv diff -t analogbri_led_control_req_message dump.txt m.bin", "see what has changed"}}};

const std::vector<ExitMeaning> exit_meanings{
    {exit_fine, "all is well; also when the reader of a pipe has gone"},
    {exit_found, "a difference, or invalid data where that was the question: diff, verify, guess, annotate, "
                 "frames of captures; or types and find found none"},
    {exit_usage, "the command line makes no sense, or names a type or code that does not exist"},
    {exit_malformed, "the input is malformed: bytes that do not decode, JSON that does not encode"},
    {exit_io, "a file or stream cannot be opened, read or written"},
    {exit_memory, "there is not enough memory"},
};

void add_common_options(Command command) {
    add_choice(
        command, "--color", colour_when,
        {{"auto", ColourWhen::automatic}, {"always", ColourWhen::always}, {"never", ColourWhen::never}},
        "Colour; unless given, on terminals only, and never when NO_COLOR is set");
    add_list(command, "--schema FILE", schema_files,
             "Take the types of this schema file, or of all in this directory, and of what they import, "
             "instead of the built-in ones; can be given several times. TLVMSG_SCHEMA does the same, with "
             "colons between them");
    add_list(command, "-I DIR", import_directories, "Directory below which schema files find imports");
}

Candidates candidates(const std::string &type_name, const std::vector<std::string> &words) {
    for (size_t i = 1; i < words.size(); ++i) {
        if (words[i - 1] == "--schema") {
            schema_files.push_back(words[i]);
        }
    }
    Candidates all;
    if (type_name == "TYPE") {
        for (const tlvmsg_type *each : all_types()) {
            all.emplace_back(each->name, each->doc);
        }
    } else if (type_name == "FAMILY") {
        for (const std::string &each : families()) {
            all.emplace_back(each, "");
        }
    } else if (type_name == "CODE") {
        for (const Explanation &each : explanations()) {
            all.emplace_back(each.code, "");
        }
    }
    return all;
}

int run(int argc, char **argv) {
    Cli cli({"tlv",
             TLV_VERSION,
             help,
             exit_meanings,
             {"tlvc(1)", "tlv-schema(5)"},
             candidates,
             add_common_options});
    for (const auto add : {add_decode, add_encode, add_annotate, add_verify, add_guess, add_diff, add_sample,
                           add_types, add_show, add_find, add_explain, add_wireshark}) {
        add(cli);
    }
    cli.add_help();
    const int status = cli.run(argc, argv);
    finish_output();
    return status;
}

// An exception would not do: memory also runs out in destructors of third parties, which none may leave.
[[noreturn]] void give_up() {
    report_out_of_memory();
    std::fflush(stdout);
    std::_Exit(exit_memory);
}

} // namespace

int main(int argc, char **argv) {
    std::set_new_handler(give_up);
    std::signal(SIGPIPE, SIG_IGN); // print notices
    std::signal(SIGXFSZ, SIG_IGN); // whatever writes files notices
    try {
        return run(argc, argv);
    } catch (const ReaderGone &) {
        return exit_fine;
    } catch (const Failure &failure) {
        report(failure);
        return failure.exit_status;
    } catch (const tlvmsg::base::IoError &error) {
        report(Failure(exit_io, error.what()));
        return exit_io;
    } catch (const std::exception &) { // memory of the platform, or a length that no string can have
        report_out_of_memory();
        return exit_memory;
    }
}
