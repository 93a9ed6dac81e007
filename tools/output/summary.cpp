#include "summary.h"

#include "json_line.h"

#include "tools/words.h"

#include <fmt/format.h>

namespace tlvmsg::tool {

namespace {

class CountingPrinter : public Printer {
public:
    CountingPrinter(std::unique_ptr<Printer> printer, Summary &summary)
        : printer_(std::move(printer)), summary_(summary) {}

    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        summary_.message(reading.type, verdict.extent);
        printer_->message(input, reading, verdict, record);
    }
    size_t untyped(const Input &input, const Reading &reading) override {
        return printer_->untyped(input, reading);
    }
    void refused(const Input &input, const Reading &reading, const tlvmsg_fault &fault) override {
        summary_.fault(tlvmsg_code_name(fault.code));
        printer_->refused(input, reading, fault);
    }
    void problem(const Input &input, const Reading &reading) override {
        summary_.problem(*reading.problem);
        printer_->problem(input, reading);
    }

private:
    std::unique_ptr<Printer> printer_;
    Summary &summary_;
};

} // namespace

void Summary::message(const tlvmsg_type *type, const tlvmsg_extent &extent) {
    ++messages_;
    ++types_[type->name];
    deviating_ += extent.deviations > 0 ? 1 : 0;
}

void Summary::problem(const Problem &problem) {
    switch (problem.loss) {
    case Loss::possible:
        return fault(code_name(problem.code));
    case Loss::none:
        ++without_;
        return;
    case Loss::gap:
        ++gaps_;
    }
}

std::string Summary::json() const {
    const auto object = [](const Counts &counts) {
        JsonLine line;
        for (const auto &[name, count] : counts) {
            line.number(name, count);
        }
        return line.object();
    };
    JsonLine line;
    line.number("messages", messages_).json("types", object(types_)).number("deviating", deviating_);
    line.json("faults", object(faults_)).number("without", without_).number("gaps", gaps_);
    return JsonLine().json("summary", line.object()).line();
}

std::string Summary::text() const {
    std::string text = fmt::format("# {}, {} of them with deviations; {} without one; {} in streams\n",
                                   counted(messages_, "message"), deviating_, counted(without_, "frame"),
                                   counted(gaps_, "gap"));
    for (const auto &[name, count] : types_) {
        text += fmt::format("# {:>8} {}\n", count, name);
    }
    for (const auto &[name, count] : faults_) {
        text += fmt::format("# {:>8} error[{}]\n", count, name);
    }
    return text;
}

std::unique_ptr<Printer> make_counting_printer(std::unique_ptr<Printer> printer, Summary &summary) {
    return std::make_unique<CountingPrinter>(std::move(printer), summary);
}

} // namespace tlvmsg::tool
