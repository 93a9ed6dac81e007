// show: a type, for reading.
#include "show.h"

#include "commands.h"

#include "base/element.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <tlvmsg/record.h>

#include <algorithm>
#include <string_view>

namespace tlvmsg::tool {

namespace {

std::string size_text(uint32_t least, uint32_t most) {
    return least == most ? fmt::format("{}", least) : fmt::format("{}..{}", least, most);
}

std::string heading(const tlvmsg_type *type) {
    const std::string tag = type->tag != 0 ? fmt::format(", tag {} (0x{:04X})", type->tag, type->tag) : "";
    const std::string key =
        (type->flags & TLVMSG_HAS_KEY) != 0 ? fmt::format(", key {} (0x{:X})", type->key, type->key) : "";
    const std::string family = *type->family != '\0' ? fmt::format(", {}", type->family) : "";
    std::string text =
        fmt::format("{}: {}{}{}{}\n", type->name, tlvmsg_kind_name(type->kind), tag, key, family);
    if (*type->doc != '\0') {
        text += fmt::format("{}\n", type->doc);
    }
    if (*type->section != '\0') {
        text += fmt::format("In {}: {}\n", type->family, type->section);
    }
    return text + fmt::format("{} bytes on the wire, {} in memory, fingerprint 0x{:016X}\n",
                              size_text(type->min_encoded, type->max_encoded), type->size,
                              tlvmsg_fingerprint(type));
}

// ---- The declaration ----

std::string c_type(const tlvmsg_type *type) {
    if (type->kind == TLVMSG_SCALAR) {
        return std::string_view(type->name) == "char" ? "char" : fmt::format("{}_t", type->name);
    }
    return fmt::format("{}{}", type->kind == TLVMSG_ENUMERATION ? "" : "struct ", type->name);
}

std::string documented(const char *doc) { return *doc != '\0' ? fmt::format(" // {}\n", doc) : "\n"; }

// What is in the record, documented where something is said of it.
std::string fields(const tlvmsg_type *type) {
    std::string text;
    bool in_union = false;
    for (tlvmsg_field field{}; tlvmsg_next_field(type, nullptr, &field);) {
        if (field.shared != nullptr && *field.shared->doc != '\0') {
            text += fmt::format("    // {}: {}\n", field.shared->path, field.shared->doc);
        }
        if (in_union != (field.alternative != nullptr)) {
            text += in_union ? "    };\n" : "    union {\n";
            in_union = !in_union;
        }
        text += fmt::format("{}{} {};{}", in_union ? "        " : "    ", c_type(field.type), field.name,
                            documented(field.doc));
    }
    return text + (in_union ? "    };\n" : "");
}

std::string enumerators(const tlvmsg_type *type) {
    std::string text;
    for (uint32_t i = 0; i < type->enumerator_count; ++i) {
        const tlvmsg_enumerator &each = type->enumerators[i];
        text += fmt::format("#define {}_{} UINT32_C({}){}", type->name, each.name, each.value,
                            documented(each.doc));
    }
    return text;
}

std::string array_fields(const tlvmsg_type *type) {
    const std::string item = tlvmsg_type_is_bytes(type) ? "uint8_t" : c_type(type->element);
    const std::string_view name = tlvmsg_type_is_bytes(type) ? "bytes" : "items";
    const std::string count = fmt::format("    uint{}_t count;\n", 8 * type->count_width);
    return tlvmsg_type_is_dynamic(type)
               ? fmt::format("{}    {} *{};\n", count, item, name)
               : fmt::format("{}    {} {}[{}];\n", count, item, name, type->capacity);
}

std::string declaration(const tlvmsg_type *type) {
    if (type->kind == TLVMSG_SCALAR) {
        return "";
    }
    if (type->kind == TLVMSG_ENUMERATION) {
        return fmt::format("\ntypedef uint32_t {};\n{}", type->name, enumerators(type));
    }
    if (type->selector_offset != 0) {
        return "\n// its fields are those of the structure around it\n";
    }
    return fmt::format("\ntypedef struct {} {{\n{}}} {};\n", type->name,
                       type->element != nullptr ? array_fields(type) : fields(type), type->name);
}

// ---- The wire ----

// Offsets count what is there at least; behind the first part of varying size they are marked so.
class WireRows {
public:
    std::string text(const tlvmsg_type *type) {
        add(type, "", 0, longest);
        return text_;
    }

private:
    static constexpr uint32_t longest = base::header_size + UINT16_MAX;

    void row(uint32_t least, uint32_t most, unsigned depth, const std::string &what) {
        text_ += fmt::format("{:>8}  {:>11}  {:{}}{}\n", fmt::format("{}{}", offset_, fixed_ ? "" : "+"),
                             size_text(least, most), "", 2 * depth, what);
    }

    // `room` is how many bytes the elements around it leave.
    void add(const tlvmsg_type *type, const std::string &name, unsigned depth, uint32_t room) {
        if (type->kind == TLVMSG_MESSAGE) {
            return members(type, depth, longest);
        }
        const bool is_array = type->element != nullptr, is_union = type->kind == TLVMSG_UNION;
        row(type->min_encoded, type->max_encoded, depth,
            fmt::format("{}{}{}{}", name, name.empty() ? "" : ": ", type->name,
                        is_array   ? items(type, room)
                        : is_union ? ""
                                   : fmt::format(", tag {}", type->tag)));
        if (type->kind == TLVMSG_STRUCTURE) {
            offset_ += base::header_size;
            return members(type, depth + 1, room - type->min_encoded);
        }
        choices(type, depth + 1);
        offset_ += type->min_encoded;
        fixed_ = fixed_ && type->min_encoded == type->max_encoded;
    }

    // `spare` bytes can be added to the least that the members have.
    void members(const tlvmsg_type *type, unsigned depth, uint32_t spare) {
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const tlvmsg_member &member = type->members[i];
            add(member.type, member.path, depth, std::min(longest, spare + member.type->min_encoded));
        }
    }

    // The largest count is stated unless the count's own field is what bounds it.
    static std::string items(const tlvmsg_type *type, uint32_t room) {
        const std::string item = tlvmsg_type_is_bytes(type) ? "bytes" : type->element->name;
        const bool bare = tlvmsg_type_is_bytes(type) || type->kind == TLVMSG_PACKED_ARRAY;
        const uint64_t fit =
            (room - type->min_encoded) / (bare ? type->element->size : type->element->min_encoded);
        const bool all = fit >= tlvmsg_most_items(type);
        if (tlvmsg_type_is_dynamic(type)) {
            return all ? fmt::format(", count and {}", item)
                       : fmt::format(", count and up to {} {}", fit, item);
        }
        return fmt::format(", count and up to {} {}{}{}", type->capacity, item,
                           type->kind == TLVMSG_PACKED_ARRAY ? " without headers" : "",
                           all ? "" : fmt::format(", of which {} fit", fit));
    }

    void choices(const tlvmsg_type *type, unsigned depth) {
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            const tlvmsg_alternative &choice = type->alternatives[i];
            std::string values;
            for (uint32_t j = 0; j < choice.value_count; ++j) {
                const tlvmsg_enumerator *const named =
                    tlvmsg_enumerator_by_value(type->selector, choice.values[j]);
                values += fmt::format("{}{}", j == 0 ? "" : " or ", choice.values[j]);
                values += named != nullptr ? fmt::format(" ({})", named->name) : "";
            }
            row(choice.type->min_encoded, choice.type->max_encoded, depth,
                fmt::format("{} {} {}: {}", type->selector_name, values, choice.name, choice.type->name));
        }
    }

    std::string text_;
    uint32_t offset_ = 0;
    bool fixed_ = true;
};

} // namespace

std::string show(const tlvmsg_type *type) {
    return heading(type) + declaration(type) +
           fmt::format("\n{:>8}  {:>11}  {}\n", "offset", "size", "element") + WireRows().text(type);
}

namespace {

struct Options {
    std::string type;
    bool json = false;
};

int run(const Options &options) {
    const tlvmsg_type *const type = find_type(options.type, Spelling::part);
    print(options.json ? value_of(type_to_json(*type, {2, 0, {}})) + "\n" : show(type));
    return exit_fine;
}

} // namespace

void add_show(Cli &cli) {
    auto [command, options] = cli.add(
        "show",
        {"Show a type: its purpose, C declaration and layout on the wire",
         {"Sizes include headers. An offset with a + is the least that it can be, since something before it "
          "varies in size.",
          "JSON is an object: what tlvc-describe(1) says of a type, as far as the library knows it; the "
          "layout is that of this machine."},
         {{"tlv show zel_led_control", "the type of that name"},
          {"tlv show VLAN_STATS_M", "the one type whose name has that part; of several, which there are"},
          {"tlv show --json 1357 | jq '.layouts[].offsets'",
           "where the fields of the type of that tag lie"}}},
        run);
    command.add_option("TYPE", options.type, "A type, by name, part of it, or tag").required();
    add_json_flag(command, options.json);
}

} // namespace tlvmsg::tool
