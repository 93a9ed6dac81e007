// What can be read of a broken encoding: the pieces of its trace, put where they belong.
#include "block.h"
#include "words.h"

#include <tlvmsg/forms/partial.h>
#include <tlvmsg/record.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <new>
#include <span>
#include <string_view>

namespace tlvmsg::forms {

namespace {

using Json = nlohmann::ordered_json;

Json number_json(const tlvmsg_type *type, uint64_t value) {
    if (const tlvmsg_enumerator *named = tlvmsg_enumerator_by_value(type, value)) {
        return named->name;
    }
    return tlvmsg_type_is_signed(type) ? Json(static_cast<int64_t>(value)) : Json(value);
}

Json bytes_json(std::span<const uint8_t> bytes) {
    if (is_printable(bytes)) {
        return std::string(bytes.begin(), bytes.end());
    }
    return {{"hex", fmt::format("{:02x}", fmt::join(bytes, ""))}};
}

// A count that JSON does not show, since it is the next member's length.
bool is_count(const tlvmsg_member *member) {
    return member != nullptr && (member->flags & TLVMSG_SHARED_WITH_NEXT) != 0 &&
           tlvmsg_type_is_dynamic(member[1].type);
}

class Partial {
public:
    explicit Partial(const uint8_t *in) : in_(in) {}

    static void trace(void *context, const tlvmsg_piece *piece) {
        auto &partial = *static_cast<Partial *>(context);
        try {
            partial.add(*piece);
        } catch (const std::exception &) { // must not pass the C functions in between
            partial.failed_ = true;
        }
    }

    std::string text(unsigned indent) const {
        if (failed_) {
            throw std::bad_alloc();
        }
        return whole_.dump(indent == 0 ? -1 : static_cast<int>(indent), ' ', true);
    }

private:
    void add(const tlvmsg_piece &piece) {
        switch (piece.kind) {
        case TLVMSG_PIECE_VALUE:
            if (!is_count(piece.place->member)) {
                node(*piece.place) = number_json(piece.place->type, piece.value);
            }
            break;
        case TLVMSG_PIECE_COUNT:
            if (Json &array = node(*piece.place->parent); array.is_null()) {
                array = tlvmsg_type_is_bytes(piece.place->parent->type) ? Json("") : Json::array();
            }
            break;
        case TLVMSG_PIECE_BYTES:
            node(*piece.place) = bytes_json({in_ + piece.offset, piece.size});
            break;
        case TLVMSG_PIECE_HEADER:
        case TLVMSG_PIECE_TERMINATOR:
        case TLVMSG_PIECE_SKIPPED:
        case TLVMSG_PIECE_DEVIATION:
            break;
        }
    }

    // Made when it is not there yet.
    Json &node(const tlvmsg_place &place) {
        if (place.parent == nullptr) {
            return whole_;
        }
        Json &parent = node(*place.parent);
        if (place.name == nullptr) {
            while (parent.size() <= place.index) {
                parent.push_back(nullptr);
            }
            return parent[place.index];
        }
        return place.member != nullptr ? member(parent, place.member->path) : parent[place.name];
    }

    // A selector's path leads into its union: "address.type". An empty one is that of a union in its structure.
    static Json &member(Json &structure, std::string_view path) {
        if (path.empty()) {
            return structure;
        }
        const size_t dot = path.find('.');
        Json &first = structure[std::string(path.substr(0, dot))];
        return dot == path.npos ? first : member(first, path.substr(dot + 1));
    }

    const uint8_t *in_;
    Json whole_;
    bool failed_ = false;
};

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_partial_to_json(const tlvmsg_type *type, const uint8_t *in, size_t in_len, unsigned indent,
                            char **text, size_t *length, tlvmsg_fault *stopped, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    if (text != nullptr) {
        *text = nullptr;
    }
    if (length != nullptr) {
        *length = 0;
    }
    if (type == nullptr || text == nullptr || (in == nullptr && in_len > 0)) {
        give_null_argument(fault, type == nullptr ? "type" : text == nullptr ? "text" : "in");
        return false;
    }
    return guarded(fault, "", [&] {
        Partial partial(in);
        tlvmsg_trace(type, in, in_len, nullptr, Partial::trace, &partial, nullptr, stopped);
        *text = text_block(partial.text(indent), length);
    });
}
