// Messages without a type as JSON and as lines.
#include "base/hex.h"
#include "forms/border/input.h"
#include "forms/bytes/untyped.h"
#include "forms/json/writer.h"
#include "forms/print/text.h"
#include "forms/record/record.h"
#include "forms/record/words.h"

#include <fmt/format.h>

namespace tlvmsg::forms {

namespace {

Record record_of(const UntypedElement &element) {
    Record record(element.type);
    const Bytes own = element.content;
    tlvmsg_fault fault;
    if (!tlvmsg_decode(element.type, own.data(), own.size(), nullptr, record.data(), nullptr, &fault) &&
        fault.code == TLVMSG_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    return record;
}

// A member of the list that is open.
void write_json(JsonWriter &json, const tlvmsg_type_set *set, const UntypedElement &element) {
    json.next();
    json.open('{');
    json.key(element.name());
    switch (element.kind) {
    case UntypedKind::typed:
        json.value(element.type, record_of(element).data());
        break;
    case UntypedKind::number:
        json.number(element.type, element.number());
        break;
    case UntypedKind::elements:
    case UntypedKind::array:
        json.open('[');
        for_each_inside(set, element, [&](const auto &inside) { write_json(json, set, inside); });
        json.close(']');
        break;
    case UntypedKind::bytes:
        json.bytes(element.content);
        break;
    case UntypedKind::opaque:
        json.hex(element.content);
    }
    json.close('}');
}

void write_lines(Output &output, const tlvmsg_type_set *set, const std::string &above,
                 const UntypedElement &element) {
    const std::string path = above + element.name();
    const auto line = [&](const std::string &value) { output.write(fmt::format("{} = {}\n", path, value)); };
    switch (element.kind) {
    case UntypedKind::typed:
        return write_text(output, element.type, record_of(element).data(), path);
    case UntypedKind::number:
        return line(number_text(element.type, element.number()));
    case UntypedKind::elements:
    case UntypedKind::array:
        return for_each_inside(set, element, [&](const UntypedElement &inside) {
            write_lines(output, set, path + ".", inside);
        });
    case UntypedKind::bytes:
        return line(bytes_text(element.content));
    case UntypedKind::opaque:
        return line(fmt::format("hex({})", base::hex_pairs(element.content)));
    }
}

// Tells each whole element, as it is in a copy of its bytes alone, and stores where they end.
template <class Write>
void tell_elements(const tlvmsg_type_set *set, Bytes bytes, size_t *end, Write write) {
    const size_t last = for_each_element(bytes, [&](const Element &element) {
        const Bytes own = element.own(bytes);
        const std::vector<uint8_t> copy = copy_of(own.data(), own.size());
        write(read_untyped(set, copy));
    });
    if (end != nullptr) {
        *end = last;
    }
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_untyped_to_json(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len,
                            const tlvmsg_json_options *options, tlvmsg_sink sink, void *context, size_t *end,
                            tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    return tell(call.takes("options", options).reads("in", in, in_len), sink, context, [&](Output &output) {
        JsonWriter json(options);
        json.open('[');
        tell_elements(set, {in, in_len}, end, [&](const UntypedElement &element) {
            write_json(json, set, element);
            output.write(json.text);
            json.text.clear();
        });
        json.close(']');
        output.write(json.text);
    });
}

bool tlvmsg_untyped_to_text(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len,
                            const tlvmsg_text_options *options, tlvmsg_sink sink, void *context, size_t *end,
                            tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    return tell(call.takes("options", options).reads("in", in, in_len), sink, context, [&](Output &output) {
        const std::string whole(whole_of(options));
        tell_elements(set, {in, in_len}, end, [&](const UntypedElement &element) {
            write_lines(output, set, whole.empty() ? "" : whole + ".", element);
        });
    });
}
