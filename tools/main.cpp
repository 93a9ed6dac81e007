// tlv: TLV messages from the shell.
#include "cli.h"
#include "commands.h"
#include "faults.h"
#include "terminal.h"

#include <csignal>
#include <exception>

namespace {

using namespace tlvmsg::tool;

int run(int argc, char **argv) {
    Cli cli;
    add_decode_command(cli);
    add_record_commands(cli);
    add_message_commands(cli);
    add_schema_commands(cli);
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
