// What can be read of a broken encoding: the pieces of its trace, put where they belong.
#include "base/hex.h"
#include "base/relay.h"
#include "forms/border/block.h"
#include "forms/border/call.h"
#include "forms/border/input.h"
#include "forms/json/writer.h"
#include "forms/record/words.h"

#include <tlvmsg/forms/partial.h>
#include <tlvmsg/record.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tlvmsg::forms {

namespace {

// A value, or what is between brackets. Libraries' trees allocate when they are released, and may fail at that.
struct Node {
    std::string name{};  // in an object
    std::string value{}; // as JSON; empty when it could not be read
    char bracket = '\0'; // of an object or array
    std::vector<Node> inside{};

    Node &member(std::string_view wanted) {
        bracket = '{';
        const auto found = std::find_if(inside.rbegin(), inside.rend(),
                                        [&](const Node &each) { return each.name == wanted; });
        return found != inside.rend() ? *found : inside.emplace_back(Node{std::string(wanted)});
    }

    Node &item(size_t index) {
        bracket = '[';
        inside.resize(std::max(inside.size(), index + 1));
        return inside[index];
    }

    void write(JsonWriter &writer) const {
        if (bracket == '\0') {
            writer.text += value.empty() ? "null" : value;
            return;
        }
        writer.open(bracket);
        for (const Node &each : inside) {
            bracket == '{' ? writer.key(each.name) : writer.next();
            each.write(writer);
        }
        writer.close(bracket == '{' ? '}' : ']');
    }
};

// A count that JSON does not show, since it is the next member's length.
bool is_count(const tlvmsg_member *member) {
    return member != nullptr && (member->flags & TLVMSG_SHARED_WITH_NEXT) != 0 &&
           tlvmsg_type_is_dynamic(member[1].type);
}

// What is read of bytes of which `size` are there, while the rest is made up.
class Partial {
public:
    Partial(const uint8_t *bytes, size_t size) : bytes_(bytes), size_(size) {}

    static void trace(void *context, const tlvmsg_piece *piece) {
        auto &partial = *static_cast<Partial *>(context);
        partial.relay_.run([&] { partial.add(*piece); });
    }

    std::string text(unsigned indent) const {
        relay_.throw_on();
        const tlvmsg_json_options options{indent, 0, {}};
        JsonWriter writer(&options);
        whole_.write(writer);
        return std::move(writer.text);
    }

private:
    void add(const tlvmsg_piece &piece) {
        ended_ = ended_ || piece.offset + piece.size > size_;
        if (ended_) {
            return;
        }
        switch (piece.kind) {
        case TLVMSG_PIECE_VALUE:
            if (!is_count(piece.place->member)) {
                JsonWriter number(nullptr);
                number.number(piece.place->type, piece.value);
                node(*piece.place).value = std::move(number.text);
            }
            break;
        case TLVMSG_PIECE_COUNT:
            add_array(*piece.place->parent, piece.value);
            break;
        case TLVMSG_PIECE_BYTES:
            add_bytes(node(*piece.place), {bytes_ + piece.offset, piece.size});
            break;
        case TLVMSG_PIECE_HEADER:
        case TLVMSG_PIECE_TERMINATOR:
        case TLVMSG_PIECE_SKIPPED:
        case TLVMSG_PIECE_DEVIATION:
            break;
        }
    }

    void add_array(const tlvmsg_place &place, uint64_t count) {
        if (!tlvmsg_type_is_bytes(place.type)) {
            node(place).bracket = '[';
        } else if (count == 0) { // otherwise the bytes are to come
            node(place).value = "\"\"";
        }
    }

    static void add_bytes(Node &node, std::span<const uint8_t> bytes) {
        if (is_printable(bytes)) {
            JsonWriter text(nullptr);
            text.bytes(bytes);
            node.value = std::move(text.text);
        } else {
            node.member("hex").value = '"' + base::hex_digits(bytes) + '"';
        }
    }

    // Made when it is not there yet.
    Node &node(const tlvmsg_place &place) {
        if (place.parent == nullptr) {
            return whole_;
        }
        Node &parent = node(*place.parent);
        if (place.name == nullptr) {
            return parent.item(place.index);
        }
        return place.member != nullptr ? member(parent, place.member->path) : parent.member(place.name);
    }

    // A selector's path leads into its union: "address.type". An empty one is that of a union in its structure.
    static Node &member(Node &structure, std::string_view path) {
        if (path.empty()) {
            return structure;
        }
        const size_t dot = path.find('.');
        Node &first = structure.member(path.substr(0, dot));
        return dot == path.npos ? first : member(first, path.substr(dot + 1));
    }

    const uint8_t *bytes_;
    size_t size_;
    bool ended_ = false; // behind what is there nothing more is told
    Node whole_;
    base::Relay relay_;
};

// An element that the input's end cuts is decoded as if zeros followed, so that what is there of its inside is found.
std::string partial_json(const tlvmsg_type *type, std::vector<uint8_t> bytes, unsigned indent,
                         tlvmsg_fault &stopped) {
    constexpr size_t longest_value = 65535;
    const size_t size = bytes.size();
    tlvmsg_verify(type, bytes.data(), size, nullptr, nullptr, &stopped);
    if (stopped.code == TLVMSG_TRUNCATED) {
        bytes.resize(size + longest_value);
    }
    Partial partial(bytes.data(), size);
    tlvmsg_trace(type, bytes.data(), bytes.size(), nullptr, Partial::trace, &partial, nullptr, nullptr);
    return partial.text(indent);
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_partial_to_json(const tlvmsg_type *type, const uint8_t *in, size_t in_len, unsigned indent,
                            char **text, size_t *length, tlvmsg_fault *stopped, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    return Call(fault)
        .needs("type", type)
        .hands_out("text", text)
        .may_hand_out(length)
        .reads("in", in, in_len)
        .run([&] {
            tlvmsg_fault ignored;
            const std::string read =
                partial_json(type, copy_of(in, in_len), indent, stopped != nullptr ? *stopped : ignored);
            *text = text_block(read, length);
        });
}
