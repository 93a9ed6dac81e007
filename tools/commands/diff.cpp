// diff: messages, member by member.
#include "commands.h"

#include "tools/commands/message_options.h"
#include "tools/faults/faults.h"
#include "tools/output/message_line.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <optional>

namespace tlvmsg::tool {

namespace {

struct Options {
    MessageOptions message;
    bool json = false;
};

bool takes_all(const tlvmsg_type *type, const Message &message) {
    return tlvmsg_judge(type, message.bytes.data(), message.bytes.size(), nullptr, nullptr) == TLVMSG_FITS;
}

// The best guess for one message that takes the other as well.
const tlvmsg_type &common_type(const Message &a, const Message &b) {
    const list<tlvmsg_guess> guesses = value_of(guess(a.bytes, {0, true, {}}, type_set()));
    for (const tlvmsg_guess &each : guesses) {
        for (const tlvmsg_type *type : std::span(each.types, each.type_count)) {
            if (takes_all(type, a) && takes_all(type, b)) {
                const size_t others = each.type_count - 1;
                complain(fmt::format("tlv: taken for {}{}; -t says otherwise", type->name,
                                     others == 0 ? "" : fmt::format(", though {} fit as well", others)));
                return *type;
            }
        }
    }
    throw Failure(exit_usage, "no type takes both messages as a whole; give one with -t TYPE");
}

// Differences to standard output, each with what it is about where there are several messages.
class Report {
public:
    Report(bool json, bool several) : json_(json), several_(several) {}

    void add(size_t number, std::string_view path, const char *a, const char *b) {
        found_ = true;
        if (json_) {
            JsonLine line;
            if (several_) {
                line.number("message", number);
            }
            print(line.text("path", path).json("a", a ? a : "null").json("b", b ? b : "null").line());
            return;
        }
        const std::string_view nothing = "nothing";
        print(fmt::format("{}{}: {} -> {}\n", several_ ? fmt::format("{}: ", number) : "", path,
                          a ? a : nothing, b ? b : nothing));
    }

    // Adds a message that only one of the files has.
    void add_message(size_t number, const std::optional<Message> &a, const std::optional<Message> &b) {
        const std::string place = json_string((a ? a : b)->name);
        add(number, "(message)", a ? place.c_str() : nullptr, b ? place.c_str() : nullptr);
    }

    bool found() const { return found_; }

private:
    bool json_;
    bool several_;
    bool found_ = false;
};

// An empty record is reported.
any_record decoded(const tlvmsg_type &type, const Message &message) {
    tlvmsg_verdict verdict;
    any_record record = decode(type, message, verdict);
    if (record.data() == nullptr) {
        report(verdict.fault, message.name, message.bytes);
    }
    return record;
}

// Gives false when one of them has no message.
bool compare(const Message &a, const Message &b, size_t number, Report &differences) {
    bool whole = true;
    for (const Message *each : {&a, &b}) {
        if (each->problem) {
            report(*each->problem, each->name);
            whole = false;
        }
    }
    if (!whole) {
        return false;
    }
    if (a.type != nullptr && b.type != nullptr && a.type != b.type) {
        differences.add(number, "(type)", json_string(a.type->name).c_str(),
                        json_string(b.type->name).c_str());
        return true;
    }
    const tlvmsg_type &type = a.type != nullptr ? *a.type : b.type != nullptr ? *b.type : common_type(a, b);
    const any_record record_a = decoded(type, a), record_b = decoded(type, b);
    if (record_a.data() == nullptr || record_b.data() == nullptr) {
        return false;
    }
    for (const auto found = value_of(tlvmsg::diff(record_a, record_b));
         const tlvmsg_difference &each : found) {
        differences.add(number, each.path, each.a, each.b);
    }
    return true;
}

int run(const Options &options) {
    const std::vector<std::string> &files = options.message.files;
    if (files[0] == "-" && files[1] == "-") {
        throw Failure(exit_usage, "only one of the messages can come from standard input");
    }
    const Typing typing = typing_of(options.message);
    Messages from_a(files[0], options.message.input, typing);
    Messages from_b(files[1], options.message.input, typing);
    std::optional<Message> a = from_a.next();
    std::optional<Message> b = from_b.next();
    const bool several = (a && !a->alone) || (b && !b->alone);
    Report differences(options.json, several);
    bool whole = true;
    for (size_t number = 1; a || b; ++number, a = from_a.next(), b = from_b.next()) {
        if (a && b) {
            whole = compare(*a, *b, number, differences) && whole;
        } else {
            differences.add_message(number, a, b);
        }
    }
    return !whole ? exit_malformed : differences.found() ? exit_found : exit_fine;
}

} // namespace

void add_diff(Cli &cli) {
    auto [command, options] =
        cli.add("diff",
                {"Compare messages, member by member",
                 {"Prints a line for each member that differs: its path and both values. The n-th message of "
                  "one file is compared with the n-th of the other, and its number precedes the path where "
                  "there are several: in captures, and in text that holds several. Exits with 0 when they "
                  "say the same, with 1 when they differ, and with more when they cannot be compared."},
                 {{"tlv diff -t zel_led_control a.bin b.txt", "raw bytes against a hex dump"},
                  {"tlv diff a.bin b.bin", "the type is the best that takes both"},
                  {"tlv diff --json -t 1357 a.bin b.bin | jq -r .path", "which members differ"}}},
                run);
    add_message_options(command, options.message, "without it, the best that takes both");
    command.option("FILE").expected(2).required();
    command.add_flag("--json", options.json, "A JSON object a line for each difference");
}

} // namespace tlvmsg::tool
