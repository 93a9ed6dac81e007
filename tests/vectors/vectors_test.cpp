// Every vector file.
#include "vector_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace tlvmsg_test {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> vector_files() {
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(TLVMSG_VECTORS)) {
        if (entry.path().extension() == ".txt" && entry.path().filename() != "CMakeLists.txt") {
            files.push_back(entry.path().filename().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string text_of(const std::string &file) {
    std::ifstream stream(fs::path(TLVMSG_VECTORS) / file);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

class VectorFile : public testing::TestWithParam<std::string> {};

TEST_P(VectorFile, AgreesWithCodecs) { check_text(GetParam(), text_of(GetParam())); }

INSTANTIATE_TEST_SUITE_P(Vectors, VectorFile, testing::ValuesIn(vector_files()),
                         [](const auto &file) { return file.param.substr(0, file.param.find('.')); });

} // namespace

} // namespace tlvmsg_test
