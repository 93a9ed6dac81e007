// Framings as people write them.
#include "framing.h"
#include "place.h"
#include "text.h"

#include <cstring>

using namespace tlvmsg::inspect;

namespace {

uint64_t magnitude(int64_t number) { return static_cast<uint64_t>(number < 0 ? -number : number); }

// Whoever reads on says what may stand there, for the fault.
class Reader {
public:
    explicit Reader(const char *text) : text_(text), at_(text) {}

    bool has(const char *word) {
        const char *at = at_;
        for (; *word != '\0'; ++word, ++at) {
            if (*at != *word) { // as it does at the end of the text
                return false;
            }
        }
        at_ = at;
        return true;
    }

    bool ends() const { return *at_ == '\0'; }

    template <class Number>
    bool number(int64_t least, int64_t most, Number &value) {
        const char *const begin = at_;
        const bool is_negative = least < 0 && has("-");
        const char *const digits = at_;
        int64_t number = 0;
        for (; *at_ >= '0' && *at_ <= '9'; ++at_) {
            number = number > UINT32_MAX ? number : 10 * number + (*at_ - '0');
        }
        number = is_negative ? -number : number;
        if (at_ == digits || number < least || number > most) {
            at_ = begin;
            char allowed[64];
            Text(allowed, sizeof allowed)
                .add("a number from ")
                .add(least < 0 ? "-" : "")
                .add(magnitude(least))
                .add(" to ")
                .add(magnitude(most));
            return refuse(allowed);
        }
        value = static_cast<Number>(number);
        return true;
    }

    bool refuse(const char *allowed) {
        fault_ = fault_in(allowed, TLVMSG_FRAMING_SYNTAX, static_cast<uint64_t>(at_ - text_),
                          static_cast<uint8_t>(*at_), 0);
        return false;
    }

    const tlvmsg_fault &fault() const { return fault_; }

private:
    const char *text_;
    const char *at_;
    tlvmsg_fault fault_{};
};

struct Given {
    bool little, adjust, most;
};

bool read_option(Reader &in, tlvmsg_framing &framing, Given &given) {
    if (!given.little && in.has("little")) {
        return given.little = framing.little = true;
    }
    if (!given.adjust && in.has("inclusive")) {
        framing.adjust = -static_cast<int32_t>(framing.header);
        return given.adjust = true;
    }
    if (!given.adjust && in.has("adjust=")) {
        given.adjust = true;
        return in.number(INT32_MIN, INT32_MAX, framing.adjust);
    }
    if (!given.most && in.has("most=")) {
        given.most = true;
        return in.number(0, TLVMSG_MOST_FRAME_BODY, framing.most);
    }
    return in.refuse("little, inclusive or adjust=N, most=N, each once");
}

bool read_length_framing(Reader &in, tlvmsg_framing &framing) {
    constexpr int64_t most_header = TLVMSG_MOST_FRAME_HEADER;
    if (!in.number(1, 4, framing.width) || !(in.has("@") || in.refuse("@")) ||
        !in.number(0, most_header - framing.width, framing.length_at)) {
        return false;
    }
    framing.header = framing.length_at + framing.width;
    const bool has_header = in.has("+");
    if (has_header && !in.number(framing.header, most_header, framing.header)) {
        return false;
    }
    Given given{};
    while (in.has(",")) {
        if (!read_option(in, framing, given)) {
            return false;
        }
    }
    const bool may_have_header = !has_header && !given.little && !given.adjust && !given.most;
    return in.ends() || in.refuse(may_have_header ? "+HEADER, a comma or the end" : "a comma or the end");
}

bool read_framing(Reader &in, tlvmsg_framing &framing) {
    if (in.has("length:")) {
        return read_length_framing(in, framing);
    }
    if (in.has("skip:") ? !in.number(0, TLVMSG_MOST_FRAME_HEADER, framing.header) : !in.has("segment")) {
        return in.fault().code == TLVMSG_OK && in.refuse("segment, skip:N or length:WIDTH@OFFSET");
    }
    return in.ends() || in.refuse("the end");
}

void write_length_framing(const tlvmsg_framing &framing, Text &out) {
    out.add("length:").add(uint64_t{framing.width}).add("@").add(uint64_t{framing.length_at});
    if (framing.header != framing.length_at + framing.width) {
        out.add("+").add(uint64_t{framing.header});
    }
    out.add(framing.little ? ",little" : "");
    if (framing.adjust == -int64_t{framing.header}) {
        out.add(",inclusive");
    } else if (framing.adjust != 0) {
        out.add(framing.adjust < 0 ? ",adjust=-" : ",adjust=").add(magnitude(framing.adjust));
    }
    if (framing.most != 0) {
        out.add(",most=").add(uint64_t{framing.most});
    }
}

} // namespace

bool tlvmsg_framing_from_text(const char *text, tlvmsg_framing *framing, tlvmsg_fault *fault) {
    tlvmsg_framing read{};
    tlvmsg_fault found = null_argument(text == nullptr ? "text" : "framing");
    if (text != nullptr && framing != nullptr) {
        Reader in(text);
        found = read_framing(in, read) ? check(&read) : in.fault();
    }
    const bool is_fine = found.code == TLVMSG_OK;
    set_result(framing, is_fine ? read : tlvmsg_framing{});
    set_result(fault, found);
    return is_fine;
}

size_t tlvmsg_framing_to_text(const tlvmsg_framing *framing, char *buffer, size_t size) {
    Text out(buffer, size);
    if (check(framing).code != TLVMSG_OK) {
        return 0;
    }
    if (framing->width != 0) {
        write_length_framing(*framing, out);
    } else if (framing->header != 0) {
        out.add("skip:").add(uint64_t{framing->header});
    } else {
        out.add("segment");
    }
    return out.length();
}
