// What can be read of a broken encoding, written as its trace finds it.
#include "base/relay.h"
#include "base/wire.h"
#include "forms/border/input.h"
#include "forms/json/writer.h"

#include <tlvmsg/forms/partial.h>
#include <tlvmsg/record.h>

#include <algorithm>
#include <vector>

namespace tlvmsg::forms {

namespace {

// A count that JSON does not show, since it is the next member's length.
bool is_count(const tlvmsg_member *member) {
    return member != nullptr && (member->flags & TLVMSG_SHARED_WITH_NEXT) != 0 &&
           tlvmsg_type_is_dynamic(member[1].type);
}

// Into an object, or by index into an array.
struct Step {
    std::string_view name; // empty for an index
    size_t index;

    bool operator==(const Step &) const = default;
};

// A selector's path leads into its union: "address.type". An empty one is that of a union in its structure.
void add_steps(const tlvmsg_place &place, std::vector<Step> &steps) {
    if (place.parent == nullptr) {
        return;
    }
    add_steps(*place.parent, steps);
    if (place.name == nullptr) {
        steps.push_back({"", place.index});
        return;
    }
    for (std::string_view path = place.name; !path.empty();) {
        const std::string_view name = path.substr(0, path.find('.'));
        steps.push_back({name, 0});
        path.remove_prefix(std::min(name.size() + 1, path.size()));
    }
}

// What is read of bytes of which `size` are there, while the rest is made up. Pieces come in the order of the wire, so
// that what they belong to is opened on the way from one to the next, and closed.
class Partial {
public:
    Partial(const uint8_t *bytes, size_t size, JsonWriter &json) : bytes_(bytes), size_(size), json_(json) {}

    static void trace(void *context, const tlvmsg_piece *piece) {
        auto &partial = *static_cast<Partial *>(context);
        partial.relay_.run([&] { partial.add(*piece); });
    }

    void finish() {
        relay_.throw_on();
        if (json_.text.empty()) {
            json_.text = "null";
        }
        close_but(0);
    }

private:
    void add(const tlvmsg_piece &piece) {
        const tlvmsg_place &place = *piece.place;
        ended_ = ended_ || piece.offset + piece.size > size_;
        if (ended_) {
            return;
        }
        if (piece.kind == TLVMSG_PIECE_VALUE && !is_count(place.member)) {
            go_to(place);
            json_.number(place.type, piece.value);
        } else if (piece.kind == TLVMSG_PIECE_COUNT && !tlvmsg_type_is_bytes(place.parent->type)) {
            go_to(*place.parent);
            open('[');
        } else if (piece.kind == TLVMSG_PIECE_COUNT && piece.value == 0) {
            go_to(*place.parent);
            json_.bytes({});
        } else if (piece.kind == TLVMSG_PIECE_BYTES) {
            go_to(place);
            json_.bytes({bytes_ + piece.offset, piece.size});
        }
    }

    // Up to where its value belongs.
    void go_to(const tlvmsg_place &place) {
        std::vector<Step> steps;
        add_steps(place, steps);
        size_t at = static_cast<size_t>(std::ranges::mismatch(open_, steps).in1 - open_.begin());
        close_but(at + 1);
        for (; at < steps.size(); ++at) {
            if (at == open_.size()) {
                open(steps[at].name.empty() ? '[' : '{');
            }
            go_on_to(steps[at]);
        }
    }

    void go_on_to(const Step &step) {
        if (step.name.empty()) {
            for (size_t i = open_.back().index + 1; i < step.index; ++i) { // items that could not be read
                json_.next();
                json_.text += "null";
            }
            json_.next();
        } else {
            json_.key(step.name);
        }
        open_.back() = step;
    }

    void open(char bracket) {
        json_.open(bracket);
        open_.push_back({"", SIZE_MAX}); // before the first item
    }

    void close_but(size_t count) {
        for (; open_.size() > count; open_.pop_back()) {
            json_.close(open_.back().name.empty() ? ']' : '}');
        }
    }

    const uint8_t *bytes_;
    size_t size_;
    JsonWriter &json_;
    std::vector<Step> open_; // what is read last in each bracket
    bool ended_ = false;     // behind what is there nothing more is told
    base::Relay relay_;
};

// An element that the input's end cuts is decoded as if zeros followed, so that what is there of its inside is found.
void write_partial(JsonWriter &json, const tlvmsg_type *type, std::vector<uint8_t> bytes,
                   tlvmsg_fault &stopped) {
    const size_t size = bytes.size();
    tlvmsg_verify(type, bytes.data(), size, nullptr, nullptr, &stopped);
    if (stopped.code == TLVMSG_TRUNCATED) {
        bytes.resize(size + base::longest_value);
    }
    Partial partial(bytes.data(), size, json);
    tlvmsg_trace(type, bytes.data(), bytes.size(), nullptr, Partial::trace, &partial, nullptr, nullptr);
    partial.finish();
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_partial_to_json(const tlvmsg_type *type, const uint8_t *in, size_t in_len, unsigned indent,
                            char **text, size_t *length, tlvmsg_fault *stopped, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    const tlvmsg_json_options options{indent, 0, {}};
    Call call(fault);
    call.needs("type", type).needs("text", text).reads("in", in, in_len);
    return hand_out_json(call, &options, text, length, [&](JsonWriter &json) {
        tlvmsg_fault ignored;
        write_partial(json, type, copy_of(in, in_len), stopped != nullptr ? *stopped : ignored);
    });
}
