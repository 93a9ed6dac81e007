#include "generate.h"

#include "cli.h"
#include "failure.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>

namespace tlvmsg::tool {

namespace {

void write(const std::filesystem::path &path, const std::string &text) {
    std::error_code ignored; // opening the file tells
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) {
        throw Failure(exit_io, fmt::format("{} cannot be written", path.string()));
    }
}

} // namespace

void generate(const Cli &cli, const std::string &directory) {
    const std::filesystem::path share(directory);
    write(share / "man/man1/tlv.1", man_page(cli, cli.app()));
    for (const CLI::App *command : cli.commands()) {
        write(share / fmt::format("man/man1/tlv-{}.1", command->get_name()), man_page(cli, *command));
    }
}

std::string wrapped(std::string_view text, size_t columns) {
    std::string result;
    size_t column = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const bool fits = column + 1 + word.size() <= columns;
        result += column == 0 ? "" : fits ? " " : "\n";
        column = column != 0 && fits ? column + 1 + word.size() : word.size();
        result += word;
    }
    return result;
}

bool takes_value(const CLI::Option &option) { return option.get_items_expected_max() > 0; }

bool is_public(const CLI::Option &option) { return !option.get_group().empty(); }

} // namespace tlvmsg::tool
