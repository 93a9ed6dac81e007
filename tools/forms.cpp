#include "forms.h"

#include "cli/failure.h"
#include "cli/terminal.h"
#include "forms/border/relay.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

#include <new>
#include <unistd.h>

namespace tlvmsg::tool {

using namespace cli;

namespace {

[[noreturn]] void fail(const tlvmsg_text_fault &fault, const std::string &place,
                       int status = exit_malformed) {
    if (fault.code == TLVMSG_TEXT_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    throw Failure(status, fmt::format("{}: {}", place, fault.message));
}

// What `make` makes, which fails for want of memory alone.
template <class Item, class Make>
List<Item> listed(Make make) {
    Item *items = nullptr;
    size_t count = 0;
    if (!make(&items, &count, static_cast<tlvmsg_text_fault *>(nullptr))) {
        throw std::bad_alloc();
    }
    return {items, count};
}

// Prints what `tell` tells the sink.
template <class Tell>
void print_told(Tell tell) {
    forms::Relay relay;
    const tlvmsg_sink sink = [](void *context, const char *text, size_t length) {
        return static_cast<forms::Relay *>(context)->run([&] { print({text, length}); });
    };
    tlvmsg_text_fault fault;
    const bool told = tell(sink, &relay, &fault);
    relay.throw_on();
    if (!told) {
        fail(fault, fault.path);
    }
}

} // namespace

const char *fit_name(tlvmsg_fit fit) {
    switch (fit) {
    case TLVMSG_FITS_NOT:
        return "no";
    case TLVMSG_FITS_PART:
        return "part";
    case TLVMSG_FITS:
        return "yes";
    }
    return "";
}

bool decode(Record &record, std::span<const uint8_t> bytes, tlvmsg_verdict &verdict) {
    if (tlvmsg_judge(record.type(), bytes.data(), bytes.size(), nullptr, &verdict) == TLVMSG_FITS_NOT) {
        return false;
    }
    if (!tlvmsg_decode(record.type(), bytes.data(), bytes.size(), nullptr, record.data(), nullptr, nullptr)) {
        throw std::bad_alloc(); // which alone can come between
    }
    return true;
}

List<tlvmsg_guess> guess(std::span<const uint8_t> bytes, size_t most) {
    const tlvmsg_guess_options options{most, true, {}};
    return listed<tlvmsg_guess>([&](auto **guesses, size_t *count, auto *fault) {
        return tlvmsg_guess_types(type_set(), bytes.data(), bytes.size(), &options, guesses, count, fault);
    });
}

List<tlvmsg_part> divide(std::span<const uint8_t> bytes) {
    return listed<tlvmsg_part>([&](auto **parts, size_t *count, auto *fault) {
        return tlvmsg_divide(type_set(), bytes.data(), bytes.size(), parts, count, fault);
    });
}

std::string partial_json(const tlvmsg_type *type, std::span<const uint8_t> bytes, unsigned indent) {
    char *text = nullptr;
    size_t length = 0;
    if (!tlvmsg_partial_to_json(type, bytes.data(), bytes.size(), indent, &text, &length, nullptr, nullptr)) {
        throw std::bad_alloc();
    }
    const std::unique_ptr<char, void (*)(void *)> block(text, tlvmsg_free);
    return {text, length};
}

std::string to_json(const tlvmsg_type *type, const void *record, unsigned indent, unsigned level) {
    const tlvmsg_json_options options{indent, level, {}};
    char *text = nullptr;
    size_t length = 0;
    if (!tlvmsg_to_json(type, record, &options, &text, &length, nullptr)) {
        throw std::bad_alloc();
    }
    const std::unique_ptr<char, void (*)(void *)> block(text, tlvmsg_free);
    return {text, length};
}

Record from_json(const tlvmsg_type *type, std::string_view text) {
    Record record(type);
    tlvmsg_text_fault fault;
    if (!tlvmsg_from_json(type, text.data(), text.size(), nullptr, record.data(), &fault)) {
        fail(fault, fault.path);
    }
    return record;
}

void print_text(const tlvmsg_type *type, const void *record) {
    print_told([&](auto sink, void *context, auto *fault) {
        return tlvmsg_to_text(type, record, nullptr, sink, context, fault);
    });
}

size_t print_untyped_json(std::span<const uint8_t> bytes, unsigned indent) {
    const tlvmsg_json_options options{indent, 0, {}};
    size_t end = 0;
    print_told([&](auto sink, void *context, auto *fault) {
        return tlvmsg_untyped_to_json(type_set(), bytes.data(), bytes.size(), &options, sink, context, &end,
                                      fault);
    });
    print("\n");
    return end;
}

size_t print_untyped_text(std::span<const uint8_t> bytes) {
    size_t end = 0;
    print_told([&](auto sink, void *context, auto *fault) {
        return tlvmsg_untyped_to_text(type_set(), bytes.data(), bytes.size(), nullptr, sink, context, &end,
                                      fault);
    });
    return end;
}

tlvmsg_verdict print_annotated(const tlvmsg_type *type, std::span<const uint8_t> bytes) {
    const tlvmsg_text_options options{nullptr, Paint(STDOUT_FILENO).is_on(), {}};
    tlvmsg_verdict verdict;
    print_told([&](auto sink, void *context, auto *fault) {
        return tlvmsg_annotate(type_set(), type, bytes.data(), bytes.size(), &options, sink, context,
                               &verdict, fault);
    });
    return verdict;
}

List<tlvmsg_difference> diff(const tlvmsg_type *type, const void *a, const void *b) {
    tlvmsg_difference *differences = nullptr;
    size_t count = 0;
    tlvmsg_text_fault fault;
    if (!tlvmsg_diff(type, a, b, &differences, &count, &fault)) {
        fail(fault, fault.path);
    }
    return {differences, count};
}

Record make_sample(const tlvmsg_type *type, tlvmsg_sample_kind kind, uint64_t seed,
                   const std::vector<std::string> &settings) {
    std::vector<const char *> texts;
    for (const std::string &each : settings) {
        texts.push_back(each.c_str());
    }
    const tlvmsg_sample_options options{kind, seed, texts.data(), texts.size(), {}};
    Record record(type);
    tlvmsg_text_fault fault;
    if (!tlvmsg_sample(type, &options, record.data(), &fault)) {
        const std::string setting = fault.line <= settings.size() ? settings[fault.line - 1] : "";
        fail(fault, fmt::format("--set {}: {}", setting, *fault.path != '\0' ? fault.path : type->name),
             exit_usage);
    }
    return record;
}

List<tlvmsg_hex_message> read_hex(std::string_view text) {
    tlvmsg_hex_message *messages = nullptr;
    size_t count = 0;
    tlvmsg_text_fault fault;
    if (!tlvmsg_read_hex(text.data(), text.size(), &messages, &count, &fault)) {
        fail(fault, fmt::format("line {}", fault.line));
    }
    return {messages, count};
}

} // namespace tlvmsg::tool
