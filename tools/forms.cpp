#include "forms.h"

#include "base/relay.h"
#include "cli/failure.h"
#include "cli/terminal.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

#include <memory>
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

constexpr tlvmsg_json_options type_layout{2, 0, {}};

template <class T>
T value_of(result<T, text_fault> made) {
    if (!made) {
        fail(made.fault, made.fault.path);
    }
    return std::move(made.value);
}

// Prints what `tell` tells a sink.
template <class Tell>
auto print_told(Tell tell) {
    base::Relay relay;
    auto told = tell([&](std::string_view text) noexcept { return relay.run([&] { print(text); }); });
    relay.throw_on();
    return value_of(std::move(told));
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

any_record decode(const tlvmsg_type *type, std::span<const uint8_t> bytes, tlvmsg_verdict &verdict) {
    if (tlvmsg_judge(type, bytes.data(), bytes.size(), nullptr, &verdict) == TLVMSG_FITS_NOT) {
        return {};
    }
    auto decoded = tlvmsg::decode(*type, bytes);
    if (!decoded) {
        throw std::bad_alloc(); // which alone can come between
    }
    return std::move(decoded.value);
}

list<tlvmsg_guess> guess(std::span<const uint8_t> bytes, size_t most) {
    tlvmsg_guess_options options{};
    options.most = most;
    options.search = true;
    return value_of(tlvmsg::guess(bytes, options, type_set()));
}

list<tlvmsg_part> divide(std::span<const uint8_t> bytes) {
    return value_of(tlvmsg::divide(bytes, type_set()));
}

std::string partial_json(const tlvmsg_type *type, std::span<const uint8_t> bytes, unsigned indent) {
    return value_of(partial_to_json(*type, bytes, indent));
}

std::string to_json(const any_record &record, unsigned indent, unsigned level) {
    tlvmsg_json_options options{};
    options.indent = indent;
    options.level = level;
    return value_of(tlvmsg::to_json(record, options));
}

std::string type_json(const tlvmsg_type *type) { return value_of(type_to_json(*type, type_layout)); }

std::string types_json(const std::vector<const tlvmsg_type *> &types) {
    text_fault fault;
    const std::unique_ptr<tlvmsg_type_set, void (*)(tlvmsg_type_set *)> set(
        tlvmsg_type_set_new(types.data(), types.size(), &fault), tlvmsg_type_set_free);
    if (set == nullptr) {
        fail(fault, fault.path);
    }
    return value_of(types_to_json(set.get(), type_layout));
}

any_record from_json(const tlvmsg_type *type, std::string_view text) {
    return value_of(tlvmsg::from_json(*type, text));
}

void print_text(const any_record &record) {
    print_told([&](auto sink) { return to_text(record, sink); });
}

size_t print_untyped_json(std::span<const uint8_t> bytes, unsigned indent, std::string_view behind) {
    tlvmsg_json_options options{};
    options.indent = indent;
    const size_t end =
        print_told([&](auto sink) { return untyped_to_json(bytes, sink, options, type_set()); });
    print(behind);
    return end;
}

size_t print_untyped_text(std::span<const uint8_t> bytes) {
    return print_told([&](auto sink) { return untyped_to_text(bytes, sink, {}, type_set()); });
}

tlvmsg_verdict print_annotated(const tlvmsg_type *type, std::span<const uint8_t> bytes) {
    tlvmsg_text_options options{};
    options.color = Paint(STDOUT_FILENO).is_on();
    return print_told([&](auto sink) { return annotate(type, bytes, sink, options, type_set()); });
}

list<tlvmsg_difference> differences(const any_record &a, const any_record &b) {
    return value_of(tlvmsg::diff(a, b));
}

any_record make_sample(const tlvmsg_type *type, tlvmsg_sample_kind kind, uint64_t seed,
                       const std::vector<std::string> &settings) {
    std::vector<const char *> texts;
    for (const std::string &each : settings) {
        texts.push_back(each.c_str());
    }
    tlvmsg_sample_options options{};
    options.kind = kind;
    options.seed = seed;
    options.settings = texts.data();
    options.setting_count = texts.size();
    auto made = sample(*type, options);
    if (!made) {
        const text_fault &fault = made.fault;
        const std::string setting = fault.line <= settings.size() ? settings[fault.line - 1] : "";
        fail(fault, fmt::format("--set {}: {}", setting, *fault.path != '\0' ? fault.path : type->name),
             exit_usage);
    }
    return std::move(made.value);
}

list<tlvmsg_hex_message> find_hex(std::string_view text, const tlvmsg_type *type, bool holes) {
    tlvmsg_hex_options options{};
    options.set = type_set();
    options.type = type;
    options.holes = holes;
    auto messages = tlvmsg::find_hex(text, options);
    if (!messages) {
        fail(messages.fault, fmt::format("line {}", messages.fault.line));
    }
    return std::move(messages.value);
}

} // namespace tlvmsg::tool
