// What the help and the manual pages say of tlvc and of each command, beside their options.
#pragma once

#include "cli/cli.h"
#include "cli/failure.h"

namespace tlvc::help {

using namespace tlvmsg::cli;

inline const Help program = {
    "Compile schemas of TLV messages to C headers and codecs",
    {"A schema says what messages are made of, in a language that tlv-schema(5) describes, with a family to "
     "begin with. Schema files are named by their paths, standard input by -.",
     "Faults tell the place, what was found and what would do; tlvc explain says more about their codes."},
    {{"tlvc check relay/*.tlv", "find the faults of a family of messages"},
     {"tlvc generate --out generated relay/*.tlv", "make headers and codecs of it"}}};

inline const std::vector<ExitMeaning> exit_meanings = {
    {exit_fine, "all is well; also when the reader of a pipe has gone"},
    {exit_found, "faults in a schema, files that format would change, changes that break something"},
    {exit_usage, "the command line makes no sense, or names a code that is none; of compare, any trouble"},
    {exit_io, "a file or stream cannot be read or written"}};

inline const Help check = {
    "Report the faults of schema files and of what they import",
    {"Names and tags are unique over all files that are named or imported: name all of a family, and all "
     "families that meet in one program.",
     "Warnings are chosen by their codes: --warn W002,W007 tells these, --warn=-W003 all but this one. A "
     "remark silences a warning at its place and says why, as tlv-schema(5) shows.",
     "With --fix, what there is no doubt about is corrected first: separators, names of types and "
     "declarations that are one slip away from one that there is, numeric types of other languages, counts, "
     "selectors and imports that are missing, remarks that silence nothing. Only files that are named are "
     "changed, each as a whole, as by tlvc format, which lays them out; then faults that are left are told.",
     "In JSON, faults are an array of objects with file, line, column, end_line, end_column, code, severity, "
     "message, help, notes and corrections. Lines and columns count from 1, columns in characters. The "
     "corrections mend the fault together: each puts its replacement in place of what file, line, column, "
     "end_line and end_column say. Faults beyond 100,000 are only counted.",
     "With --format github, standard output has a command for each fault, by which GitHub shows it in code "
     "reviews, where files are named as from the top of the repository."},
    {{"tlvc check relay/*.tlv", "silent when all is well"},
     {"tlvc check --warn --fix relay/*.tlv", "mend what can be mended, tell the rest"},
     {"tlvc check --strict --format json relay/*.tlv | jq -r '.[].code'", "nothing doubtful, either"}}};

inline const Help generate = {
    "Write the headers and codecs of schema files",
    {"Below DIR come, of the families of these files, include/tlvmsg with the headers and src with what is "
     "to be compiled. Nothing is written when there are faults, and a file that has its text already stays "
     "as it is.",
     "With CMake, tlvmsg_add_family(TARGET SCHEMA FILE... [IMPORT DIR...] [LIBRARY NAME]) of the package "
     "tlvmsg generates and builds. TARGET is a library that there is, as by add_library(TARGET SHARED), or "
     "becomes one; IMPORT is -I; LIBRARY is what to link, tlvmsg_inspect or tlvmsg_inspect_static. Cross "
     "builds name with -DTLVC_EXECUTABLE=/usr/bin/tlvc what runs on the host.",
     "Elsewhere compile the .cpp files of src as C++20, with DIR/include, DIR/src and what 'pkg-config "
     "--variable=codecdir tlvmsg_inspect' prints among the directories for includes, and link with "
     "tlvmsg_inspect. No run time of C++ is needed."},
    {{"tlvc generate --out generated relay/*.tlv", "of one family"}}};

inline const Help interface = {
    "Print what peers and programs rely on, to compare and review",
    {"Of each type the kind, tag, sizes, members and values, and the layout of its record on machines with "
     "64 bits, with 32, and on i386. tlvc compare reads it like a schema."},
    {{"tlvc interface relay/*.tlv > interface.txt", "what is promised from now on"}}};

inline const Help describe = {
    "Print the schema as one JSON document, for programs",
    {"The document is an object of format, a number; families, by name, each with its documentation, the "
     "families that it uses, and its sections, one a schema file, with the names of their types; and types: "
     "the scalars, then those of each family, every type behind those of its family that its record holds. "
     "Each family and each type has a line. What is imported is there as well, in sections that say so.",
     "A type has its documentation, kind and tag, or key; members, alternatives and selector, element and "
     "capacity, or enumerators, as its kind has them; the least and the most bytes that it takes on the "
     "wire, and its fingerprint; size, alignment and offsets of its record under LP64, ILP32 and i386; its "
     "names in C; and its users, the types that name it. Types refer to each other by name. What does not "
     "apply is not there. A JSON Schema, installed as share/tlvmsg/describe.schema.json, says of each key "
     "what it is, and which kinds have it.",
     "Readers ignore keys that they do not know. While the number in format stays, keys are only added, and "
     "none goes or changes its meaning.",
     "The library's own schema is installed in this form as share/tlvmsg/schema.json. tlv show --json, tlv "
     "types --json and tlvmsg_types_to_json of libtlvmsg_forms print what descriptors know of types under "
     "the same keys: the layout is that of their machine, and names in C, users and some other keys are "
     "missing."},
    {{"tlvc describe relay/*.tlv > relay.json", "all that there is to know of a family"},
     {"tlvc describe relay/*.tlv | jq -r '.types[] | select(.kind == \"message\").name'",
      "what the messages are called, also those of imported files"}}};

inline const Help format = {
    "Bring schema files into the canonical form",
    {"Files are rewritten, standard input goes to standard output. Remarks and the "
     "order of declarations stay. A file that is no schema stays as it is.",
     "Whatever fails, a file has either its old text or the new one: that is written "
     "beside it and takes its place, with its mode. Symbolic links are followed; a file "
     "with several hard links is refused."},
    {{"tlvc format relay/*.tlv", "rewrite a family"},
     {"tlvc format --check relay/*.tlv", "name what would change, as a test"}}};

inline const Help tags = {
    "Print which tags are used, and which are free",
    {"Tags from 32768 on are for families of your own: the library has none of them, now and later."},
    {{"tlvc tags relay/*.tlv", "where the next type of the family fits"}}};

inline const Help compare = {
    "Tell what the changes from one schema to another break",
    {"Four things can break: wire, where either peer refuses or misreads what the other sends; json, where "
     "documents of OLD are refused or misread with NEW; source, where programs for OLD no longer compile "
     "with NEW; and layout, where their records in memory do not fit NEW. Documents of NEW are for readers "
     "of NEW: others refuse every name that they do not know. tlvc explain says more about a change's code.",
     "A family is called like the directory that its files lie in. Where OLD or NEW is a single schema file "
     "or standard input, the names of families are not compared.",
     "Each side finds its imports in its own files' directories, where its own option says, and in the "
     "schema of the library that is installed. A file that is read for both sides is told of, as its changes "
     "do not show.",
     "Several families are compared in one call: directories may hold any number of them, and behind the "
     "first OLD and NEW there may be further pairs.",
     "A line of the file that --exceptions names allows one change that breaks something: the code, the type "
     "or TYPE.MEMBER as the change names it, and the reason. Empty lines and those that begin with # allow "
     "nothing. Any other line that does not apply to a change is told, and makes the exit status 1.",
     "A type that no message holds travels only where programs send it alone: lines and JSON say so of it.",
     "In JSON, changes are an array of objects with file, line, column, end_line, end_column, code, severity "
     "and message, as those of tlvc check, and levels, type, member and in_message; below old and new they "
     "say what there is on that side, and its place by the same keys. The severity is breaks or safe; "
     "unknown of a file that is read for both sides, error of a line that is no exception. --format github "
     "prints what that of tlvc check does.",
     "The exit status is that of diff: 1 when something breaks, 2 for trouble."},
    {{"tlvc compare interface.txt relay", "the family now, with what was promised"},
     {"tlvc compare --in-messages interface.txt relay", "of types that travel in messages"},
     {"tlvc compare --level wire interface.txt relay", "only what peers would notice"},
     {"tlvc compare --exceptions reviewed.txt interface.txt relay", "but for what is allowed"}}};

inline const Help explain = {
    "Say more about a fault, a warning or a change",
    {},
    {{"tlvc explain T012", "what it means, and what to write instead"}, {"tlvc explain", "list the codes"}}};

inline const Help lsp = {
    "Serve an editor, over standard input and output",
    {"The language server protocol: faults and warnings of families with open files, "
     "whenever you pause, and what mends them; sizes and wire format, definitions, references "
     "and symbols; completion, which imports what it completes; rename and formatting.",
     "References are found, and names changed, in the families that have open files and in what "
     "these import: of other families open a file first. A rename is compiled before the editor has "
     "it: none leads to faults, and none is made while there are others. One that would change a file "
     "that cannot be written is refused, and outside the client's workspace one of the library's files, "
     "or one that is not beside an open one."},
    {{"tlvc lsp", "what an editor is told to start for files that end in .tlv"}}};

} // namespace tlvc::help
