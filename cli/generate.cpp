#include "generate.h"

#include "cli.h"
#include "failure.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <filesystem>
#include <fstream>

namespace tlvmsg::cli {

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
    const auto write_page = [&](const CLI::App &command) {
        write(share / fmt::format("man/man1/{}.1", page_name(cli, command)), man_page(cli, command));
    };
    write_page(cli.app());
    for (const CLI::App *command : cli.commands()) {
        write_page(*command);
    }
}

bool takes_value(const CLI::Option &option) { return option.get_items_expected_max() > 0; }

bool is_public(const CLI::Option &option) { return !option.get_group().empty(); }

} // namespace tlvmsg::cli
