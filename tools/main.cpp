// tlv: TLV messages from the shell.
#include "tools/cli/cli.h"
#include "tools/cli/faults.h"
#include "tools/cli/terminal.h"
#include "tools/commands/commands.h"

#include <csignal>
#include <exception>

namespace {

using namespace tlvmsg::tool;

int run(int argc, char **argv) {
    Cli cli;
    for (const auto add : {add_decode, add_encode, add_annotate, add_verify, add_guess, add_diff, add_sample,
                           add_types, add_show, add_explain}) {
        add(cli);
    }
    const int status = cli.run(argc, argv);
    finish_output();
    return status;
}

} // namespace

int main(int argc, char **argv) {
    std::signal(SIGPIPE, SIG_IGN); // print notices
    try {
        return run(argc, argv);
    } catch (const ReaderGone &) {
        return exit_fine;
    } catch (const Failure &failure) {
        report(failure);
        return failure.exit_status;
    } catch (const std::exception &) { // std::bad_alloc, or a length that no string can have
        report_out_of_memory();
        return exit_io;
    }
}
