// Writes valid encodings of every type into a directory, as inputs of the fuzz targets to start from.
#include "inspect/samples.h"
#include "target.h"

#include <algorithm>
#include <fstream>
#include <string>

using namespace tlvmsg_test;

namespace {

void write_seed(const std::string &path, size_t index, const Bytes &encoding) {
    std::ofstream file(path, std::ios::binary);
    file.put(static_cast<char>(index >> 8)).put(static_cast<char>(index));
    file.write(reinterpret_cast<const char *>(encoding.data()),
               static_cast<std::streamsize>(encoding.size()));
    if (!file.flush()) {
        std::fprintf(stderr, "write_seeds: cannot write %s\n", path.c_str());
        std::exit(1);
    }
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: write_seeds DIRECTORY\n");
        return 2;
    }
    constexpr size_t largest = 600; // beyond, inputs get slow without getting interesting
    for (size_t index = 0; index < tlvmsg_type_count(); ++index) {
        const tlvmsg_type &type = *tlvmsg_type_at(index);
        size_t number = 0;
        for_each_valid(type, [&](const Bytes &encoding) {
            if (encoding.size() <= largest) {
                write_seed(std::string(argv[1]) + "/" + type.name + "-" + std::to_string(number++), index,
                           encoding);
            }
        });
    }
    return 0;
}
