#include "forms/print/text.h"

#include "base/relay.h"
#include "forms/record/words.h"

#include <tlvmsg/inspect.h>

#include <fmt/format.h>

namespace tlvmsg::forms {

namespace {

// A line for each value of a walk.
class Lines {
public:
    Lines(Output &output, std::string_view whole) : output_(output), whole_(whole) {}

    static bool enter(void *context, const tlvmsg_place *place, size_t count) {
        const bool array = place->type->element != nullptr;
        return !array || count > 0 || add(context, place, [] { return "[]"; });
    }
    static void number(void *context, const tlvmsg_place *place, uint64_t value) {
        add(context, place, [&] { return number_text(place->type, value); });
    }
    static void bytes(void *context, const tlvmsg_place *place, const uint8_t *first, size_t size) {
        add(context, place, [&] { return bytes_text({first, size}); });
    }

    base::Relay relay;

private:
    template <class Value>
    static bool add(void *context, const tlvmsg_place *place, Value value) {
        auto &lines = *static_cast<Lines *>(context);
        return lines.relay.run(
            [&] { lines.output_.write(fmt::format("{} = {}\n", path_of(*place, lines.whole_), value())); });
    }

    Output &output_;
    std::string_view whole_;
};

} // namespace

void write_text(Output &output, const tlvmsg_type *type, const void *record, std::string_view whole) {
    Lines lines(output, whole);
    const tlvmsg_visitor visitor{Lines::enter, nullptr, Lines::number, Lines::bytes, {}};
    tlvmsg_walk(type, record, &visitor, &lines);
    lines.relay.throw_on();
}

} // namespace tlvmsg::forms

bool tlvmsg_to_text(const tlvmsg_type *type, const void *record, const tlvmsg_text_options *options,
                    tlvmsg_sink sink, void *context, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    call.needs("type", type).needs("record", record).takes("options", options);
    return tell(call, sink, context,
                [&](Output &output) { write_text(output, type, record, whole_of(options)); });
}
