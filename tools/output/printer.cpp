#include "printer.h"

namespace tlvmsg::tool {

std::unique_ptr<Printer> make_json_printer(const PrintOptions &options);
std::unique_ptr<Printer> make_text_printer(const PrintOptions &options);
std::unique_ptr<Printer> make_row_printer(const PrintOptions &options);

std::unique_ptr<Printer> make_printer(const PrintOptions &options) {
    switch (options.form) {
    case PrintForm::json:
        return make_json_printer(options);
    case PrintForm::text:
        return make_text_printer(options);
    case PrintForm::flat:
    case PrintForm::csv:
        return make_row_printer(options);
    }
    return nullptr;
}

} // namespace tlvmsg::tool
