#include "file.h"

#include "base/visible.h"
#include "cli/failure.h"
#include "cli/terminal.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace tlvmsg::tool {

using namespace cli;

File open_file(const std::string &path) {
    if (path == "-" && isatty(STDIN_FILENO) != 0) {
        complain("tlv: reading standard input; end it with Ctrl-D");
    }
    File file = path == "-"
                    ? File(stdin, [](std::FILE *) {})
                    : File(std::fopen(path.c_str(), "rb"), [](std::FILE *each) { std::fclose(each); });
    if (file == nullptr) {
        throw Failure(exit_io, fmt::format("{}: {}", path, std::strerror(errno)));
    }
    return file;
}

std::string file_name(const std::string &path) {
    return path == "-" ? "standard input" : base::visible_head(path);
}

std::string foreign_format(std::string_view file) {
    using namespace std::string_view_literals;
    struct Format {
        std::string_view magic, name, help;
    };
    constexpr std::string_view image = "'tesseract IMAGE -' reads the text in it";
    constexpr Format formats[] = {
        {"\x1F\x8B"sv, "gzip", "'gzip -dc FILE | tlv ...' reads what is in it"},
        {"\x28\xB5\x2F\xFD"sv, "zstd", "'zstd -dc FILE | tlv ...' reads what is in it"},
        {"\3757zXZ\0"sv, "xz", "'xz -dc FILE | tlv ...' reads what is in it"},
        {"BZh"sv, "bzip2", "'bzip2 -dc FILE | tlv ...' reads what is in it"},
        {"\x04\x22\x4D\x18"sv, "lz4", "'lz4 -dc FILE | tlv ...' reads what is in it"},
        {"PK\3\4"sv, "a zip archive", "'unzip -p FILE | tlv ...' reads what is in it"},
        {"\177ELF"sv, "an ELF program, library or core",
         "'objdump -s -j SECTION FILE | tlv ...' reads a section"},
        {"\x89PNG"sv, "a PNG image", image},
        {"\xFF\xD8\xFF"sv, "a JPEG image", image},
        {"GIF8"sv, "a GIF image", image},
        {"RIFF"sv, "an image or sound (RIFF)", image},
        {"II*\0"sv, "a TIFF image", image},
        {"%PDF-"sv, "a PDF document", "'pdftotext FILE - | tlv ...' reads the text in it"},
    };
    for (const Format &each : formats) {
        if (file.starts_with(each.magic)) {
            return fmt::format("this is {}: {}", each.name, each.help);
        }
    }
    return "";
}

} // namespace tlvmsg::tool
