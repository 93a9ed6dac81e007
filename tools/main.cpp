// tlv: TLV messages from the shell.
#include "cli/failure.h"
#include "cli/terminal.h"
#include "tools/commands/commands.h"
#include "tools/commands/program.h"
#include "tools/faults/faults.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

namespace {

using namespace tlvmsg::cli;
using namespace tlvmsg::tool;

int run(int argc, char **argv) {
    Cli cli(program());
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
    try {
        return run(argc, argv);
    } catch (const ReaderGone &) {
        return exit_fine;
    } catch (const Failure &failure) {
        report(failure);
        return failure.exit_status;
    } catch (const std::exception &) { // memory of the platform, or a length that no string can have
        report_out_of_memory();
        return exit_memory;
    }
}
