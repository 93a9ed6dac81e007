// Every vector file.
#include "vector_check.h"
#include "vector_file.h"

#include "support/record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

namespace tlvmsg_test {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> vector_files() {
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(TLVMSG_VECTORS)) {
        if (entry.path().extension() == ".txt" && entry.path().filename() != "CMakeLists.txt") {
            files.push_back(fs::relative(entry.path(), TLVMSG_VECTORS).string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string text_of(const std::string &file) {
    std::ifstream stream(fs::path(TLVMSG_VECTORS) / file);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string test_name(const testing::TestParamInfo<std::string> &file) {
    std::string name = file.param.substr(0, file.param.rfind('.'));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

class VectorFile : public testing::TestWithParam<std::string> {};

TEST_P(VectorFile, AgreesWithCodecs) { check_text(GetParam(), text_of(GetParam())); }

// Of messages, which add nothing but an order, a vector of every shape is enough.
TEST(VectorFiles, HoldEveryTypeButMessages) {
    std::set<std::string> held;
    for (const std::string &file : vector_files()) {
        for (const Vector &each : parse_vectors(file, text_of(file))) {
            for_each_type(*each.type, [&](const tlvmsg_type &type) { held.insert(type.name); });
        }
    }
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        EXPECT_TRUE(type.kind == TLVMSG_MESSAGE || held.contains(type.name)) << type.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Vectors, VectorFile, testing::ValuesIn(vector_files()), test_name);

} // namespace

} // namespace tlvmsg_test
