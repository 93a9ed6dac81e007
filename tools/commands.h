// The commands, a group a file. Each function adds its group to the command line.
#pragma once

namespace tlvmsg::tool {

class Cli;

void add_schema_commands(Cli &cli);  // types, show, explain
void add_message_commands(Cli &cli); // annotate, verify, guess
void add_decode_command(Cli &cli);   // decode
void add_record_commands(Cli &cli);  // encode, sample, diff

} // namespace tlvmsg::tool
