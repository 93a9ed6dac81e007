#include "base/colour.h"
#include "base/hex.h"
#include "base/relay.h"
#include "forms/border/input.h"
#include "forms/border/output.h"
#include "forms/bytes/untyped.h"
#include "forms/record/words.h"

#include <tlvmsg/forms/annotate.h>

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tlvmsg::forms {

namespace {

constexpr size_t bytes_a_line = 16;
constexpr size_t byte_columns = 3 * bytes_a_line - 1;

// Lines of explained bytes, which never leave one out nor print one twice, whatever is explained.
class Page {
public:
    Page(Output &output, Bytes bytes, bool color) : output_(output), bytes_(bytes), color_(color) {}

    enum class Aside { nothing, characters };

    void heading(std::string_view text, std::string_view type) {
        output_.write(fmt::format("# {} bytes{}\n", bytes_.size(), text));
        if (!type.empty()) {
            output_.write(fmt::format("type {}\n", painted(Colour::bold, type)));
        }
    }

    // Those of the page's bytes that were printed before are named only.
    void explain(Bytes part, const std::string &text, Aside aside = Aside::nothing) {
        const auto offset = static_cast<size_t>(part.data() - bytes_.data());
        const size_t end = offset + part.size();
        if (part.empty()) {
            return;
        }
        rest(offset, "not understood");
        if (end <= covered_) {
            return note(Colour::dim, fmt::format("bytes {} to {} again: {}", offset, end - 1, text));
        }
        const bool again = offset < covered_;
        std::string head = again ? fmt::format("from byte {}: {}", offset, text) : text;
        while (covered_ < end) {
            const size_t width = std::min(bytes_a_line, end - covered_);
            const Bytes row = bytes_.subspan(covered_, width);
            if (aside == Aside::characters) {
                head += fmt::format("{}\"{}\"", head.empty() ? "" : " ", printable(row));
            }
            line(fmt::format("{:4}", covered_), base::hex_pairs(row), head);
            covered_ += width;
            head.clear();
        }
    }

    void note(Colour color, const std::string &text) {
        output_.write(fmt::format("{:{}}| {}\n", "", 4 + 2 + byte_columns + 2, painted(color, text)));
    }

    size_t covered() const { return covered_; }

    // What is left up to there.
    void rest(size_t end, const std::string &text) {
        explain(bytes_.first(std::max(end, covered_)).subspan(covered_), text, Aside::characters);
    }

private:
    void line(const std::string &offset, const std::string &bytes, const std::string &text) {
        const size_t width = 4 + byte_columns - std::min(4 + byte_columns, offset.size() + bytes.size());
        output_.write(fmt::format("{}  {}{:{}}  |{}{}\n", painted(Colour::dim, offset), bytes, "", width,
                                  text.empty() ? "" : " ", text));
    }

    std::string painted(Colour color, std::string_view text) const {
        return color_ ? base::painted(color, text) : std::string(text);
    }

    Output &output_;
    Bytes bytes_;
    bool color_;
    size_t covered_ = 0;
};

std::string line_of(const tlvmsg_fault &fault, const char *label) {
    std::string text(TLVMSG_FAULT_TEXT, '\0');
    text.resize(std::min(tlvmsg_fault_message(&fault, text.data(), text.size()), text.size() - 1));
    return fmt::format("! {}[{}]: {}", label, tlvmsg_code_name(fault.code), text);
}

void explain_untyped(Page &page, const tlvmsg_type_set *set, const UntypedElement &read,
                     const std::string &above);

// Puts the pieces of a trace on a page. A number's headers and its value make one line.
class Explainer {
public:
    Explainer(Page &page, const tlvmsg_type_set *set, Bytes bytes, std::string whole)
        : page_(page), set_(set), bytes_(bytes), whole_(std::move(whole)) {}

    // Explains the bytes, which are all of the page's, or an element that the type accepts without deviations. Returns
    // whether the type accepts them.
    bool trace(const tlvmsg_type *type) {
        const auto add = [](void *context, const tlvmsg_piece *piece) {
            auto &self = *static_cast<Explainer *>(context);
            self.relay_.run([&] { self.add(*piece); });
        };
        const bool accepted =
            tlvmsg_trace(type, bytes_.data(), bytes_.size(), nullptr, add, this, nullptr, nullptr);
        relay_.throw_on();
        finish();
        return accepted;
    }

    // Behind a fault: every element around it ends somewhere, and behind that others may be known.
    void go_on() {
        open_.insert(open_.begin(), bytes_.size());
        for (bool said = false; !open_.empty(); open_.pop_back()) {
            const size_t end = std::min(open_.back(), bytes_.size());
            if (!said && likely_element(page_.covered(), end)) {
                page_.note(Colour::dim, "what can be told of the rest, by its tags:");
                said = true;
            }
            explain_by_tags(end, "");
            page_.rest(end, "not understood");
        }
    }

private:
    // Headers whose value may follow.
    struct Pending {
        size_t offset = 0;
        size_t size = 0;
        std::string path{};
        std::string text{};
    };

    void finish() {
        if (pending_.size > 0) {
            const Pending pending = std::exchange(pending_, {});
            page_.explain(bytes_.subspan(pending.offset, pending.size), pending.text);
        }
    }

    void add(const tlvmsg_piece &piece) {
        const std::string path = path_of(*piece.place, whole_);
        const size_t end = piece.offset + piece.size;
        const bool is_number = piece.kind <= TLVMSG_PIECE_COUNT; // or a header, which may be one's
        if (!is_number || pending_.path != path || pending_.offset + pending_.size != piece.offset) {
            finish();
        }
        const Bytes part = bytes_.subspan(piece.offset, piece.size);
        switch (piece.kind) {
        case TLVMSG_PIECE_HEADER:
            enter(piece.offset, end + (piece.value & 0xFFFF));
            if (pending_.size == 0) {
                pending_ = {piece.offset, 0, path, header_text(piece, path)};
            }
            pending_.size += piece.size;
            return;
        case TLVMSG_PIECE_VALUE:
        case TLVMSG_PIECE_COUNT: {
            const size_t headers = std::exchange(pending_, {}).size;
            return page_.explain(bytes_.subspan(piece.offset - headers, headers + piece.size),
                                 number_line(piece, path));
        }
        case TLVMSG_PIECE_BYTES:
            return page_.explain(part, fmt::format("{}: {} bytes", path, piece.size),
                                 Page::Aside::characters);
        case TLVMSG_PIECE_TERMINATOR:
            return page_.explain(part, path + ": terminator");
        case TLVMSG_PIECE_SKIPPED:
            return skip(part, end, path + ": skipped");
        case TLVMSG_PIECE_DEVIATION:
            return page_.note(Colour::yellow, line_of(*piece.fault, "tolerated"));
        }
    }

    // An element, which is open as long as nothing behind it begins.
    void enter(size_t offset, size_t end) {
        while (!open_.empty() && open_.back() <= offset) {
            open_.pop_back();
        }
        open_.push_back(end);
    }

    void skip(Bytes part, size_t end, const std::string &text) {
        if (end - part.size() != page_.covered()) {
            return page_.explain(part, text, Page::Aside::characters);
        }
        explain_by_tags(end, text + ", ");
        page_.rest(end, text);
    }

    // From where the page is up to `end`, as long as there are elements that make sense.
    void explain_by_tags(size_t end, const std::string &above) {
        while (const auto element = likely_element(page_.covered(), end)) {
            explain_untyped(page_, set_, *element, above);
        }
    }

    // A whole element that its type takes, or that the end or a known tag follows.
    std::optional<UntypedElement> likely_element(size_t at, size_t end) const {
        const std::optional<Element> element = at < end ? element_at(bytes_.first(end), at) : std::nullopt;
        if (!element || element->tag == 0) {
            return std::nullopt;
        }
        const UntypedElement read = read_untyped(set_, element->own(bytes_));
        const bool taken = read.kind == UntypedKind::typed || read.kind == UntypedKind::number;
        const bool likely = taken || element->end() == end || is_known(element->end(), end);
        return likely ? std::optional(read) : std::nullopt;
    }

    bool is_known(size_t at, size_t end) const {
        if (end - at < header_size) {
            return false;
        }
        const uint16_t tag = number_at(bytes_, at);
        return tag == array_tag || tlvmsg_type_set_by_tag(set_, tag) != nullptr;
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
    const tlvmsg_type_set *set_;
    Bytes bytes_;
    std::string whole_;
    base::Relay relay_;
    Pending pending_;
    std::vector<size_t> open_; // ends of the elements around what comes next
};

void explain_untyped(Page &page, const tlvmsg_type_set *set, const UntypedElement &read,
                     const std::string &above) {
    const std::string path = above + read.name();
    const bool known = read.type != nullptr || read.tag == array_tag; // otherwise the name is the tag
    const std::string tag = known ? fmt::format(", tag {}", read.tag) : "";
    const std::string head = fmt::format("{}{}, length {}", path, tag, read.own.size() - header_size);
    const auto head_size = static_cast<size_t>(read.content.data() - read.own.data());
    const Bytes behind = read.own.subspan(head_size + read.content.size());
    switch (read.kind) {
    case UntypedKind::typed:
        Explainer(page, set, read.content, path).trace(read.type);
        break;
    case UntypedKind::number:
        page.explain(read.own, fmt::format("{} = {}", path, number_text(read.type, read.number())));
        break;
    case UntypedKind::bytes:
        page.explain(read.own.first(head_size), fmt::format("{}, count {}", head, read.content.size()));
        page.explain(read.content, path, Page::Aside::characters);
        page.explain(behind, path + ": terminator");
        break;
    case UntypedKind::elements:
    case UntypedKind::array:
        page.explain(read.own.first(head_size), head);
        for_each_inside(set, read, [&](const auto &each) { explain_untyped(page, set, each, path + "."); });
        break;
    case UntypedKind::opaque:
        page.explain(read.own.first(head_size), head);
        page.explain(read.content, path, Page::Aside::characters);
    }
}

void annotate(Page &page, const tlvmsg_type_set *set, const tlvmsg_type *type, Bytes bytes,
              tlvmsg_verdict &verdict) {
    page.heading("", type->name);
    tlvmsg_judge(type, bytes.data(), bytes.size(), nullptr, &verdict);
    Explainer explainer(page, set, bytes, "");
    if (!explainer.trace(type)) {
        page.note(Colour::red, line_of(verdict.fault, "error"));
        explainer.go_on();
    }
    page.rest(bytes.size(), fmt::format("behind the end of {}", type->name));
}

void annotate_elements(Page &page, const tlvmsg_type_set *set, Bytes bytes, tlvmsg_verdict &verdict) {
    page.heading(", by their tags", "");
    verdict.extent.consumed = for_each_element(bytes, [&](const Element &element) {
        explain_untyped(page, set, read_untyped(set, element.own(bytes)), "");
    });
    verdict.fit = verdict.extent.consumed == bytes.size() ? TLVMSG_FITS : TLVMSG_FITS_PART;
    page.rest(bytes.size(), "no whole element");
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_annotate(const tlvmsg_type_set *set, const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                     const tlvmsg_text_options *options, tlvmsg_sink sink, void *context,
                     tlvmsg_verdict *verdict, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    tlvmsg_verdict ignored;
    tlvmsg_verdict &found = verdict != nullptr ? *verdict : ignored;
    found = {};
    Call call(fault);
    return tell(call.takes("options", options).reads("in", in, in_len), sink, context, [&](Output &output) {
        const std::vector<uint8_t> bytes = copy_of(in, in_len);
        Page page(output, bytes, options != nullptr && options->color);
        if (type != nullptr) {
            annotate(page, set, type, bytes, found);
        } else {
            annotate_elements(page, set, bytes, found);
        }
    });
}
