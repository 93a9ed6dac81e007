// Every vector file against both libraries; README.md says what the words in it mean.
#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/hex.h"
#include "support/record.h"

#include <tlvmsg/forms.h>
#include <tlvmsg/record.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace tlvmsg_test {

namespace {

namespace fs = std::filesystem;

struct Vector {
    std::string place; // file and line
    std::string type;
    std::string record; // as JSON
    std::string bytes;  // as the file has them
};

// A word begins a line; what is indented goes on with the record, or is a line of bytes, which has a bar.
std::vector<Vector> vectors_of(const std::string &name) {
    std::ifstream file(fs::path(TLVMSG_VECTORS) / name);
    std::vector<Vector> vectors;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const std::string place = name + ":" + std::to_string(number);
        if (line.starts_with("type ")) {
            vectors.push_back({place, line.substr(5), "", ""});
        } else if (line.find('|') != line.npos) {
            vectors.at(vectors.size() - 1).bytes += line + "\n";
        } else if (line.starts_with("record ") || line.starts_with(' ')) {
            vectors.at(vectors.size() - 1).record += line.substr(line.find(' '));
        } else if (!line.empty() && line[0] != '#') {
            throw std::runtime_error(place + ": no line of a vector");
        }
    }
    return vectors;
}

Bytes bytes_of(const std::string &text) {
    tlvmsg_hex_message *messages = nullptr;
    size_t count = 0;
    tlvmsg_text_fault fault;
    if (!tlvmsg_read_hex(text.data(), text.size(), &messages, &count, &fault)) {
        throw std::runtime_error(fault.message);
    }
    Bytes bytes(messages[0].bytes, messages[0].bytes + messages[0].size);
    tlvmsg_free(messages);
    return bytes;
}

constexpr size_t room_behind = 64; // where the exact encoder may find bytes of a dynamic array

Bytes record_of(const tlvmsg_type &type, const std::string &json) {
    Bytes record(type.size + room_behind);
    tlvmsg_text_fault fault;
    if (!tlvmsg_from_json(&type, json.data(), json.size(), nullptr, record.data(), &fault)) {
        throw std::runtime_error(std::string(fault.path) + ": " + fault.message);
    }
    return record;
}

// Except for blocks, records are compared byte by byte, so that nothing else has changed either.
void expect_same(const tlvmsg_type &type, const Bytes &record, const Bytes &expected) {
    char *text = nullptr;
    char *expected_text = nullptr;
    EXPECT_TRUE(tlvmsg_to_json(&type, record.data(), nullptr, &text, nullptr, nullptr));
    EXPECT_TRUE(tlvmsg_to_json(&type, expected.data(), nullptr, &expected_text, nullptr, nullptr));
    EXPECT_STREQ(text, expected_text);
    tlvmsg_free(text);
    tlvmsg_free(expected_text);
    EXPECT_TRUE(holds(type, is_dynamic) || record == expected);
}

// The exact encoder takes the bytes of a dynamic array from the record itself, from the pointer field onward.
Bytes with_bytes_in_place(const tlvmsg_type &type, Bytes record) {
    const tlvmsg_member *last = type.member_count == 0 ? nullptr : &type.members[type.member_count - 1];
    if (last != nullptr && is_dynamic_bytes(*last->type)) {
        uint8_t *array = record.data() + last->offset;
        const tlvmsg_items items = tlvmsg_items_of(last->type, array);
        std::copy_n(items.first, items.readable, array + last->type->items_offset);
    }
    return record;
}

void check_encoding(const tlvmsg_type &type, const std::string &json, const Bytes &bytes) {
    const Codec codec = find_codec(type);
    Bytes record = record_of(type, json);
    const Bytes in_place = with_bytes_in_place(type, record);
    EXPECT_EQ(codec.size(in_place.data()), bytes.size());
    const GuardedBuffer wire(bytes.size());
    EXPECT_EQ(codec.encode(in_place.data(), wire.data()), wire.end());
    EXPECT_EQ(Bytes(wire.begin(), wire.end()), bytes);

    Bytes written(bytes.size());
    size_t size = 0;
    EXPECT_TRUE(tlvmsg_encode(&type, record.data(), written.data(), written.size(), &size, nullptr));
    EXPECT_EQ(size, bytes.size());
    EXPECT_EQ(written, bytes);
    tlvmsg_release(&type, record.data());
}

void check_exact_decoding(const tlvmsg_type &type, const Bytes &bytes, const Bytes &expected) {
    GuardedBuffer wire(bytes.size());
    std::copy(bytes.begin(), bytes.end(), wire.begin());
    wire.make_read_only();
    Bytes record(expected.size());
    if (type.kind == TLVMSG_MESSAGE) { // its decoder clears the record first
        std::fill_n(record.begin(), type.size, uint8_t{0xAA});
    }
    EXPECT_EQ(find_codec(type).decode(wire.data(), record.data()), wire.end());
    expect_same(type, record, expected);
    tlvmsg_release(&type, record.data());
}

void check_bounded_decoding(const tlvmsg_type &type, const Bytes &bytes, const Bytes &expected) {
    const tlvmsg_limits strict{0, true, {}};
    Bytes record(expected.size());
    size_t consumed = 0;
    tlvmsg_fault fault;
    EXPECT_TRUE(tlvmsg_decode(&type, bytes.data(), bytes.size(), &strict, record.data(), &consumed, &fault))
        << fault.path;
    EXPECT_EQ(consumed, bytes.size());
    expect_same(type, record, expected);
    tlvmsg_release(&type, record.data());
}

void check(const Vector &vector) {
    const tlvmsg_type *type = tlvmsg_type_find(vector.type.c_str());
    ASSERT_NE(type, nullptr);
    const Bytes bytes = bytes_of(vector.bytes);
    check_encoding(*type, vector.record, bytes);
    Bytes record = record_of(*type, vector.record);
    check_exact_decoding(*type, bytes, record);
    check_bounded_decoding(*type, bytes, record);
    tlvmsg_release(type, record.data());
}

std::vector<std::string> vector_files() {
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(TLVMSG_VECTORS)) {
        if (entry.path().extension() == ".txt" && entry.path().filename() != "CMakeLists.txt") {
            files.push_back(entry.path().filename().string());
        }
    }
    return files;
}

class VectorFile : public testing::TestWithParam<std::string> {};

TEST_P(VectorFile, AgreesWithBothLibraries) {
    const std::vector<Vector> vectors = vectors_of(GetParam());
    EXPECT_FALSE(vectors.empty());
    for (const Vector &each : vectors) {
        SCOPED_TRACE(each.place);
        check(each);
    }
}

INSTANTIATE_TEST_SUITE_P(Vectors, VectorFile, testing::ValuesIn(vector_files()),
                         [](const auto &file) { return file.param.substr(0, file.param.find('.')); });

} // namespace

} // namespace tlvmsg_test
