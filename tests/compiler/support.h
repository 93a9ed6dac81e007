#pragma once

#include "base/files.h"
#include "compiler/compare/compile_any.h"
#include "compiler/language/parser.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace tlvc {

using tlvmsg::base::IoError;
using tlvmsg::base::read_file;

inline const std::filesystem::path data_directory = COMPILER_TEST_DATA;

inline const Library library = installed_library();

// Schema files that exist as long as the object.
class SchemaDirectory {
public:
    SchemaDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "tlvc_test_XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw IoError("no temporary directory");
        }
        root_ = std::filesystem::canonical(name);
    }
    ~SchemaDirectory() { std::filesystem::remove_all(root_); }
    SchemaDirectory(const SchemaDirectory &) = delete;
    SchemaDirectory &operator=(const SchemaDirectory &) = delete;

    std::string add(const std::string &path, const std::string &text) const {
        std::filesystem::create_directories((root_ / path).parent_path());
        std::ofstream(root_ / path) << text;
        return (root_ / path).string();
    }
    std::filesystem::path path(const std::string &below) const { return root_ / below; }

private:
    std::filesystem::path root_;
};

struct Compiled {
    explicit Compiled(const std::vector<std::string> &paths)
        : schema(paths.size() == 1 ? compile_any(paths[0], sources, faults, library)
                                   : compile(paths, sources, faults, library)) {}

    std::vector<std::string> codes() const {
        std::vector<std::string> result;
        for (const Diagnostic &fault : faults.in_file_order()) {
            result.emplace_back(fault.fault->code);
        }
        return result;
    }
    const Type &type(std::string_view name) const {
        for (const auto &each : schema->types) {
            if (each.name == name) {
                return each;
            }
        }
        throw std::out_of_range(std::string(name));
    }

    Sources sources;
    Diagnostics faults;
    std::unique_ptr<const Schema> schema;
};

struct Parsed {
    explicit Parsed(const std::string &text)
        : syntax(parse(sources, sources.add("test.tlv", text), faults)) {}

    Sources sources;
    Diagnostics faults;
    syntax::File syntax;
};

} // namespace tlvc
