// The border between callers in C and the compiler's phases.
#include "base/files.h"
#include "compiler/build/compile.h"
#include "compiler/checks/checks.h"
#include "schema_library/descriptors.h"
#include "schema_library/faults.h"

#include <tlvmsg/schema.h>

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <span>

namespace tlvmsg::schema {

namespace {

// What is not about a text: thrown, and told as a fault.
struct Refused {
    const char *code;
    std::string message;
};

void need(const void *argument, std::string_view name) {
    if (argument == nullptr) {
        throw Refused{"null-argument", fmt::format("'{}' is a null pointer", name)};
    }
}

template <class Structure>
void refuse_reserved_words(const Structure &structure, std::string_view name) {
    if (std::any_of(std::begin(structure.reserved), std::end(structure.reserved),
                    [](uintptr_t word) { return word != 0; })) {
        throw Refused{"reserved-word", fmt::format("a reserved word of '{}' is not zero", name)};
    }
}

// What a caller passed, once it makes sense.
struct Input {
    std::vector<std::string> paths;
    tlvc::OpenTexts texts;
    tlvc::ImportPath import_path;
    std::filesystem::path installed;
    bool warnings = false;

    Input(const tlvmsg_schema_source *sources, size_t count, const tlvmsg_schema_options *options) {
        if (count > 0) {
            need(sources, "sources");
        }
        for (const tlvmsg_schema_source &each : std::span(sources, count)) {
            take(each);
        }
        if (options != nullptr) {
            take(*options);
        }
    }

private:
    void take(const tlvmsg_schema_source &source) {
        refuse_reserved_words(source, "sources");
        need(source.path, "path");
        const std::string path = source.path;
        if (path.empty()) {
            throw Refused{"cannot-read", "a path is empty"};
        }
        paths.push_back(path == "-" ? "./-" : path); // to the compiler '-' is standard input
        if (source.text_len > 0) {
            need(source.text, "text");
        }
        if (source.text_len > base::longest_text) {
            throw Refused{"cannot-read",
                          fmt::format("'{}' has more than {} bytes", path, base::longest_text)};
        }
        if (source.text != nullptr &&
            !texts.try_emplace(tlvc::canonical_path(paths.back()), source.text, source.text_len).second) {
            throw Refused{"duplicate-path", fmt::format("there are two texts of '{}'", path)};
        }
    }

    void take(const tlvmsg_schema_options &options) {
        refuse_reserved_words(options, "options");
        if (options.import_path_count > 0) {
            need(options.import_paths, "import_paths");
        }
        for (const char *each : std::span(options.import_paths, options.import_path_count)) {
            need(each, "import_paths");
            import_path.emplace_back(each);
        }
        installed = options.installed != nullptr ? options.installed : "";
        warnings = options.warnings;
    }
};

// Null, once its faults are told, where there is none.
std::unique_ptr<const tlvc::Schema> compiled(const Input &input, Faults &told) {
    const tlvc::Library library =
        input.installed.empty() ? tlvc::Library() : tlvc::read_library(input.installed);
    tlvc::Sources sources;
    tlvc::Diagnostics faults;
    const tlvc::Program program =
        tlvc::load(input.paths, sources, faults, library, input.import_path, input.texts);
    auto schema = tlvc::compile(program, library, faults);
    if (schema && input.warnings) {
        tlvc::find_warnings(*schema, sources, library, faults);
    }
    told.add(faults, sources);
    return schema;
}

struct FreeTypeSet {
    void operator()(tlvmsg_type_set *set) const { tlvmsg_type_set_free(set); }
};
using TypeSet = std::unique_ptr<tlvmsg_type_set, FreeTypeSet>;

TypeSet set_of(const std::vector<const tlvmsg_type *> &types) {
    TypeSet set(tlvmsg_type_set_new(types.data(), types.size(), nullptr));
    if (!set) {
        throw std::bad_alloc(); // since no schema has a name twice
    }
    return set;
}

// Of a null pointer, whose schema there was no memory for.
constexpr tlvmsg_schema_fault no_memory{
    TLVMSG_SCHEMA_ERROR, "out-of-memory", "", 0, 0, 0, 0, "there is no more memory", "", {}};

} // namespace

} // namespace tlvmsg::schema

struct tlvmsg_schema {
    tlvmsg::schema::Faults faults;
    std::unique_ptr<const tlvc::Schema> model; // whose texts the descriptors refer to
    std::optional<tlvmsg::schema::Descriptors> descriptors;
    tlvmsg::schema::TypeSet types;

    tlvmsg_schema(const tlvmsg_schema_source *sources, size_t count, const tlvmsg_schema_options *options) {
        using namespace tlvmsg;
        try {
            model = schema::compiled(schema::Input(sources, count, options), faults);
        } catch (const schema::Refused &refused) {
            faults.add(refused.code, refused.message);
        } catch (const base::IoError &error) {
            faults.add("cannot-read", error.what());
        } catch (const std::filesystem::filesystem_error &error) {
            faults.add("cannot-read", error.what());
        }
        if (model) {
            descriptors.emplace(*model);
        }
        types = schema::set_of(model ? descriptors->all() : std::vector<const tlvmsg_type *>());
    }
};

bool tlvmsg_schema_load(const tlvmsg_schema_source *sources, size_t count,
                        const tlvmsg_schema_options *options, tlvmsg_schema **schema) {
    if (schema == nullptr) {
        return false;
    }
    *schema = nullptr;
    try {
        *schema = new tlvmsg_schema(sources, count, options);
        return (*schema)->model != nullptr;
    } catch (const std::exception &) { // std::bad_alloc, or a length that no string can have
        return false;
    }
}

void tlvmsg_schema_free(tlvmsg_schema *schema) { delete schema; }

const tlvmsg_type_set *tlvmsg_schema_types(const tlvmsg_schema *schema) {
    return schema != nullptr ? schema->types.get() : nullptr;
}

const tlvmsg_schema_fault *tlvmsg_schema_faults(const tlvmsg_schema *schema, size_t *count) {
    const std::span faults =
        schema != nullptr ? std::span(schema->faults.all()) : std::span(&tlvmsg::schema::no_memory, 1);
    if (count != nullptr) {
        *count = faults.size();
    }
    return faults.data();
}
