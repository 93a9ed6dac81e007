#include "annotate.h"

#include "raw.h"
#include "text.h"
#include "tools/cli/faults.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

namespace tlvmsg::tool {

namespace {

using Bytes = std::span<const uint8_t>;

constexpr size_t bytes_a_line = 16;
constexpr size_t byte_columns = 3 * bytes_a_line - 1;

// Lines of explained bytes, which never leave one out nor print one twice, whatever is explained.
class Page {
public:
    Page(Bytes bytes, const Paint &paint) : bytes_(bytes), paint_(paint) {}

    enum class Aside { nothing, characters };

    // Bytes that were printed before are named only.
    void explain(size_t offset, size_t size, const std::string &text, Aside aside = Aside::nothing) {
        if (offset > covered_) {
            explain(covered_, offset - covered_, "not understood", Aside::characters);
        }
        const size_t end = offset + size;
        if (end <= covered_) {
            note(Colour::dim, fmt::format("bytes {} to {} again: {}", offset, end - 1, text));
            return;
        }
        const bool again = offset < covered_;
        std::string head = again ? fmt::format("from byte {}: {}", offset, text) : text;
        while (covered_ < end) {
            const size_t width = std::min(bytes_a_line, end - covered_);
            const Bytes part = bytes_.subspan(covered_, width);
            if (aside == Aside::characters) {
                head += fmt::format("{}\"{}\"", head.empty() ? "" : " ", printable(part));
            }
            line(fmt::format("{:4}", covered_), hex_pairs(part), head);
            covered_ += width;
            head.clear();
        }
    }

    void note(Colour colour, const std::string &text) {
        print(fmt::format("{:{}}| {}\n", "", 4 + 2 + byte_columns + 2, paint_(colour, text)));
    }

    size_t covered() const { return covered_; }

    void rest(const std::string &text) {
        if (covered_ < bytes_.size()) {
            explain(covered_, bytes_.size() - covered_, text, Aside::characters);
        }
    }

private:
    void line(const std::string &offset, const std::string &bytes, const std::string &text) {
        const size_t width = 4 + byte_columns - std::min(4 + byte_columns, offset.size() + bytes.size());
        print(fmt::format("{}  {}{:{}}  |{}{}\n", paint_(Colour::dim, offset), bytes, "", width,
                          text.empty() ? "" : " ", text));
    }

    Bytes bytes_;
    const Paint &paint_;
    size_t covered_ = 0;
};

// Puts the pieces of a trace on a page. A number's headers and its value make one line.
class Explainer {
public:
    Explainer(Page &page, Bytes bytes, size_t base, std::string whole)
        : page_(page), bytes_(bytes), base_(base), whole_(std::move(whole)) {}

    static void trace(void *context, const tlvmsg_piece *piece) {
        static_cast<Explainer *>(context)->add(*piece);
    }

    void finish() {
        if (pending_.size > 0) {
            const Pending pending = std::exchange(pending_, {});
            page_.explain(pending.offset, pending.size, pending.text);
        }
    }

private:
    // Headers whose value may follow.
    struct Pending {
        size_t offset = 0;
        size_t size = 0;
        std::string path;
        std::string text;
    };

    void add(const tlvmsg_piece &piece) {
        const std::string path = path_of(*piece.place, whole_);
        const size_t offset = base_ + piece.offset;
        const bool continues =
            pending_.size > 0 && pending_.path == path && pending_.offset + pending_.size == offset;
        switch (piece.kind) {
        case TLVMSG_PIECE_HEADER:
            if (continues) {
                pending_.size += piece.size;
                return;
            }
            finish();
            pending_ = {offset, piece.size, path, header_text(piece, path)};
            return;
        case TLVMSG_PIECE_VALUE:
        case TLVMSG_PIECE_COUNT: {
            const size_t start = continues ? pending_.offset : offset;
            if (continues) {
                pending_ = {};
            }
            finish();
            page_.explain(start, offset + piece.size - start, number_line(piece, path));
            return;
        }
        default:
            finish();
            other(piece, path, offset);
        }
    }

    void other(const tlvmsg_piece &piece, const std::string &path, size_t offset) {
        const Bytes part = bytes_.subspan(offset, piece.size);
        switch (piece.kind) {
        case TLVMSG_PIECE_BYTES:
            page_.explain(offset, piece.size, fmt::format("{}: {} bytes", path, part.size()),
                          Page::Aside::characters);
            break;
        case TLVMSG_PIECE_TERMINATOR:
            page_.explain(offset, piece.size, path + ": terminator");
            break;
        case TLVMSG_PIECE_DEVIATION:
            page_.note(Colour::yellow, "! " + tolerated_text(*piece.fault));
            break;
        default:
            page_.explain(offset, piece.size, path + ": skipped", Page::Aside::characters);
        }
    }

    static std::string header_text(const tlvmsg_piece &piece, const std::string &path) {
        const tlvmsg_type *const type = piece.place->type;
        const std::string what = type->element != nullptr ? "array" : type->name;
        const std::string of = path == what ? path : fmt::format("{}: {}", path, what);
        return fmt::format("{}, tag {}, length {}", of, piece.value >> 16, piece.value & 0xFFFF);
    }

    static std::string number_line(const tlvmsg_piece &piece, const std::string &path) {
        const tlvmsg_type *const type = piece.place->type;
        const bool named = piece.kind == TLVMSG_PIECE_VALUE && path != type->name;
        return fmt::format("{}{} = {}", path, named ? fmt::format(": {}", type->name) : "",
                           number_text(type, piece.value));
    }

    Page &page_;
    Bytes bytes_;
    size_t base_;
    std::string whole_;
    Pending pending_;
};

void explain_raw(Page &page, Bytes bytes, const RawElement &raw, const std::string &above) {
    const Element &element = raw.element;
    const std::string path = above + raw.name();
    const bool known = raw.type != nullptr || element.tag == array_tag; // otherwise the name is the tag
    const std::string tag = known ? fmt::format(", tag {}", element.tag) : "";
    const std::string head = fmt::format("{}{}, length {}", path, tag, element.length);
    switch (raw.kind) {
    case RawKind::typed: {
        Explainer explainer(page, bytes, element.offset, path);
        const Bytes own = element.own(bytes);
        tlvmsg_trace(raw.type, own.data(), own.size(), nullptr, Explainer::trace, &explainer, nullptr,
                     nullptr);
        explainer.finish();
        break;
    }
    case RawKind::number:
        page.explain(element.offset, element.end() - element.offset,
                     fmt::format("{} = {}", path, number_text(raw.type, raw_number(bytes, raw))));
        break;
    case RawKind::bytes: {
        const Bytes part = raw_bytes(bytes, raw);
        const size_t start = static_cast<size_t>(part.data() - bytes.data());
        page.explain(element.offset, start - element.offset, fmt::format("{}, count {}", head, part.size()));
        if (!part.empty()) {
            page.explain(start, part.size(), path, Page::Aside::characters);
        }
        if (page.covered() < element.end()) {
            page.explain(page.covered(), 1, path + ": terminator");
        }
        break;
    }
    case RawKind::elements:
    case RawKind::array: {
        const size_t start = raw.inside.empty() ? element.end() : raw.inside.front().element.offset;
        page.explain(element.offset, start - element.offset, head);
        for (const RawElement &inside : raw.inside) {
            explain_raw(page, bytes, inside, path + ".");
        }
        break;
    }
    case RawKind::opaque:
        page.explain(element.offset, header_size, head);
        if (element.length > 0) {
            page.explain(element.value(), element.length, path, Page::Aside::characters);
        }
    }
}

} // namespace

bool annotate(const tlvmsg_type *type, Bytes bytes, const Paint &paint, tlvmsg_fault &fault) {
    print(fmt::format("# {} bytes\ntype {}\n", bytes.size(), paint(Colour::bold, type->name)));
    Page page(bytes, paint);
    Explainer explainer(page, bytes, 0, "");
    const bool accepted = tlvmsg_trace(type, bytes.data(), bytes.size(), nullptr, Explainer::trace,
                                       &explainer, nullptr, &fault);
    explainer.finish();
    if (!accepted) {
        page.note(Colour::red, "! " + fault_text(fault));
    }
    page.rest(accepted ? fmt::format("behind the end of {}", type->name) : "not understood");
    return accepted;
}

size_t annotate_raw(Bytes bytes, const Paint &paint) {
    print(fmt::format("# {} bytes, by their tags\n", bytes.size()));
    const RawMessage message = read_raw(bytes);
    Page page(bytes, paint);
    for (const RawElement &raw : message.elements) {
        explain_raw(page, bytes, raw, "");
    }
    page.rest("no whole element");
    return message.end;
}

} // namespace tlvmsg::tool
