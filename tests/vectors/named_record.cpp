#include "named_record.h"

#include "support/record.h"

#include <algorithm>
#include <charconv>

namespace tlvmsg_test {

namespace {

constexpr size_t room_behind_record = 256;

bool sets_count(const Assignment &assignment) {
    return assignment.path.ends_with(".count") || assignment.path == "count";
}

void add_fields(const tlvmsg_type &type, const uint8_t *at, const std::string &path, std::string &text);

void add_items(const tlvmsg_type &type, const uint8_t *at, const std::string &path, std::string &text) {
    const uint64_t count = load_number(at, type.count_width);
    text += path + ".count = " + std::to_string(count) + "\n";
    const uint8_t *items = is_dynamic(type) ? load_pointer(at + type.items_offset) : at + type.items_offset;
    const uint64_t present = items == nullptr   ? 0
                             : is_dynamic(type) ? count
                                                : std::min<uint64_t>(count, type.capacity);
    if (type.kind == TLVMSG_BYTE_ARRAY || type.kind == TLVMSG_DYNAMIC_BYTES) {
        text += path + ".bytes = " + to_hex(items, static_cast<size_t>(present)) + "\n";
        return;
    }
    for (uint64_t i = 0; i < present; ++i) {
        add_fields(*type.element, items + i * type.element->size, path + ".items[" + std::to_string(i) + "]",
                   text);
    }
}

std::string joined(const std::string &path, const char *name) {
    return path.empty() || name[0] == '\0' ? path + name : path + "." + name;
}

void add_fields(const tlvmsg_type &type, const uint8_t *at, const std::string &path, std::string &text) {
    if (is_array(type)) {
        return add_items(type, at, path, text);
    }
    if (type.kind == TLVMSG_UNION) {
        if (const tlvmsg_alternative *chosen = chosen_alternative(type, at)) {
            add_fields(*chosen->type, at + chosen->offset, joined(path, chosen->name), text);
        }
        return;
    }
    if (type.kind == TLVMSG_SCALAR || type.kind == TLVMSG_ENUMERATION) {
        text += path + " = " + std::to_string(load_number(at, type.size)) + "\n";
    }
    for (uint32_t i = 0; i < type.member_count; ++i) {
        const tlvmsg_member &member = type.members[i];
        add_fields(*member.type, at + member.offset, joined(path, member.path), text);
    }
}

} // namespace

// Finds the field that an assignment names and sets it.
class NamedRecord::Assigner {
public:
    Assigner(NamedRecord &record, const Assignment &assignment) : record_(record), assignment_(assignment) {}

    void assign(const tlvmsg_type &type, uint8_t *at, std::string_view path) const {
        if (path.empty()) {
            return set_number(type, at);
        }
        const std::string_view name = path.substr(0, path.find_first_of(".["));
        const std::string_view rest = path.substr(std::min(name.size() + 1, path.size()));
        if (is_array(type)) {
            assign_array(type, at, name, rest);
        } else if (type.kind == TLVMSG_UNION) {
            assign_union(type, at, name, rest);
        } else {
            assign_member(type, at, path, name, rest);
        }
    }

private:
    [[noreturn]] void fail(const std::string &message) const {
        throw VectorFault(assignment_.place, assignment_.path + ": " + message);
    }

    [[noreturn]] void fail_unknown(const tlvmsg_type &type, std::string_view name) const {
        fail(std::string(type.name) + " has no field '" + std::string(name) + "'");
    }

    void assign_member(const tlvmsg_type &type, uint8_t *at, std::string_view path, std::string_view name,
                       std::string_view rest) const {
        const tlvmsg_member *const end = type.members + type.member_count;
        const auto named = [end, &type](std::string_view wanted) {
            return std::find_if(type.members, end,
                                [&](const tlvmsg_member &each) { return each.path == wanted; });
        };
        if (const tlvmsg_member *member = named(name); member != end) {
            assign(*member->type, at + member->offset, rest);
        } else if (const tlvmsg_member *sharing = named(""); sharing != end) {
            assign(*sharing->type, at + sharing->offset, path);
        } else {
            fail_unknown(type, name);
        }
    }

    void assign_union(const tlvmsg_type &type, uint8_t *at, std::string_view name,
                      std::string_view rest) const {
        if (name == type.selector_name) {
            return assign(*type.selector, at + type.selector_offset, rest);
        }
        for (uint32_t i = 0; i < type.alternative_count; ++i) {
            if (type.alternatives[i].name == name) {
                return assign(*type.alternatives[i].type, at + type.alternatives[i].offset, rest);
            }
        }
        fail_unknown(type, name);
    }

    void assign_array(const tlvmsg_type &type, uint8_t *at, std::string_view name,
                      std::string_view rest) const {
        const bool of_bytes = type.kind == TLVMSG_BYTE_ARRAY || type.kind == TLVMSG_DYNAMIC_BYTES;
        if (name == "count" && rest.empty()) {
            set_number_of_width(type.count_width, at);
        } else if (name == "bytes" && rest.empty() && of_bytes) {
            set_bytes(type, at);
        } else if (name == "items" && !rest.empty() && !of_bytes) {
            assign_items(type, at, rest);
        } else {
            fail_unknown(type, name);
        }
    }

    // "7]" or "0..9]", and what follows it.
    void assign_items(const tlvmsg_type &type, uint8_t *at, std::string_view indices) const {
        const char *end = indices.data() + indices.size();
        uint32_t first = 0;
        auto parsed = std::from_chars(indices.data(), end, first);
        uint32_t last = first;
        if (parsed.ec == std::errc() && std::string_view(parsed.ptr, end).starts_with("..")) {
            parsed = std::from_chars(parsed.ptr + 2, end, last);
        }
        std::string_view rest(parsed.ptr, end);
        if (parsed.ec != std::errc() || !rest.starts_with(']') || last < first) {
            fail("not an index: '" + std::string(indices) + "'");
        }
        rest.remove_prefix(std::min<size_t>(rest.starts_with("].") ? 2 : 1, rest.size()));
        uint8_t *items = room_for(type, at, uint64_t{last} + 1);
        for (uint32_t i = first; i <= last; ++i) {
            assign(*type.element, items + size_t{i} * type.element->size, rest);
        }
    }

    // The items of an array that has at least so many from now on.
    uint8_t *room_for(const tlvmsg_type &type, uint8_t *at, uint64_t needed) const {
        const uint64_t count = load_number(at, type.count_width);
        if (needed > count) {
            set_count(type, at, needed);
        }
        if (!is_dynamic(type)) {
            return at + type.items_offset;
        }
        uint8_t *block = load_pointer(at + type.items_offset);
        if (needed > count || block == nullptr) {
            uint8_t *larger = new_block(needed * type.element->size);
            std::copy_n(block, block == nullptr ? 0 : count * type.element->size, larger);
            store_pointer(at + type.items_offset, larger);
            return larger;
        }
        return block;
    }

    uint8_t *new_block(uint64_t size) const {
        return record_.blocks_.emplace_back(std::max<uint64_t>(size, 1)).data();
    }

    void set_count(const tlvmsg_type &type, uint8_t *at, uint64_t count) const {
        const uint64_t capacity = is_dynamic(type) ? 0xFFFF : type.capacity;
        if (count > capacity || !fits({count, false}, type.count_width)) {
            fail(std::string(type.name) + " has no room for " + std::to_string(count));
        }
        store_number(at, type.count_width, count);
    }

    void set_bytes(const tlvmsg_type &type, uint8_t *at) const {
        const auto *bytes = std::get_if<Bytes>(&assignment_.value);
        if (bytes == nullptr) {
            fail("takes bytes, not a number");
        }
        set_count(type, at, bytes->size());
        uint8_t *items = at + type.items_offset;
        if (is_dynamic(type) && record_.dynamic_bytes_ == DynamicBytes::InBlock) {
            items = new_block(bytes->size());
            store_pointer(at + type.items_offset, items);
        } else if (bytes->size() >
                   static_cast<size_t>(record_.storage_.data() + record_.storage_.size() - items)) {
            fail("too long for this test");
        }
        std::copy(bytes->begin(), bytes->end(), items);
    }

    void set_number(const tlvmsg_type &type, uint8_t *at) const {
        if (type.kind != TLVMSG_SCALAR && type.kind != TLVMSG_ENUMERATION) {
            fail(std::string(type.name) + " is no single value");
        }
        set_number_of_width(type.size, at);
    }

    void set_number_of_width(uint32_t width, uint8_t *at) const {
        const auto *number = std::get_if<Number>(&assignment_.value);
        if (number == nullptr) {
            fail("takes a number, not bytes");
        }
        if (!fits(*number, width)) {
            fail("the number does not fit into " + std::to_string(width) + " bytes");
        }
        store_number(at, width, number->bits);
    }

    static bool fits(Number number, uint32_t width) {
        const uint64_t most = width == 8 ? UINT64_MAX : (uint64_t{1} << (8 * width)) - 1;
        return number.negative ? 0 - number.bits <= most / 2 + 1 : number.bits <= most;
    }

    NamedRecord &record_;
    const Assignment &assignment_;
};

NamedRecord::NamedRecord(const tlvmsg_type &type, DynamicBytes dynamic_bytes)
    : type_(type), dynamic_bytes_(dynamic_bytes), storage_(type.size + room_behind_record) {}

void NamedRecord::assign(const std::vector<Assignment> &assignments) {
    for (const bool counts : {false, true}) {
        for (const Assignment &each : assignments) {
            if (sets_count(each) == counts) {
                Assigner(*this, each).assign(type_, data(), each.path);
            }
        }
    }
}

std::string fields_of(const tlvmsg_type &type, const uint8_t *record) {
    std::string text;
    add_fields(type, record, "", text);
    return text;
}

} // namespace tlvmsg_test
