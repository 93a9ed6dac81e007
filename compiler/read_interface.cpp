#include "read_interface.h"

#include "parser.h"

#include <algorithm>

namespace tlvc {

namespace {

bool is_array(const std::string &heading) {
    return heading.starts_with("array ") || heading.starts_with("bytes ") || heading.starts_with("dynamic ");
}

// A part of a type in schema language: a field without its offset, with the last name of its path or, for a union
// that has none, any name. Nothing for what the heading says already: arrays' fields and unions' selectors.
std::string as_member(const std::string &heading, std::string line) {
    if (is_array(heading) || (heading.starts_with("union ") && line.find(':') == line.npos)) {
        return "";
    }
    if (!heading.starts_with("enum ")) {
        const size_t end = std::min(line.find(' ', line.find_first_not_of(' ')), line.size());
        line.replace(0, end, end, ' ');
        const size_t type = std::min(line.find_first_not_of(' '), line.size());
        line += line.find(' ', type) == line.npos ? " " + line.substr(type) : "";
    }
    if (const size_t dot = line.find('.'); dot != line.npos) {
        const size_t path = line.rfind(' ', dot);
        line.replace(path, dot + 1 - path, dot + 1 - path, ' ');
    }
    return line;
}

struct Family {
    std::string name;
    std::string text; // behind as many lines as there are before it
    std::string heading;
    bool open = false; // a body

    void add(const std::string &line) {
        if (!line.starts_with(' ')) {
            close();
            heading = line.substr(0, line.find(','));
            text += heading;
        } else if (const std::string member = as_member(heading, line); !member.empty()) {
            text += open ? member : "{" + member.substr(1);
            open = true;
        }
        text += '\n';
    }
    void close() {
        text.insert(text.size() - (open ? 1 : 0), open ? " }" : "");
        open = false;
    }
};

} // namespace

Program read_interface(const std::string &path, std::string_view text, Sources &sources,
                       Diagnostics &faults) {
    std::vector<Family> families(1);
    for (size_t lines = 1; !text.empty(); ++lines) {
        const std::string line(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.starts_with("family ")) {
            families.back().close();
            families.push_back({line.substr(line.find(' ') + 1), std::string(lines, '\n'), "", false});
        } else {
            families.back().add(line.starts_with('#') ? "" : line);
        }
    }
    families.back().close();
    std::erase_if(families,
                  [](const Family &each) { return each.text.find_first_not_of('\n') == each.text.npos; });
    Program program;
    for (uint32_t file = 0; file < families.size(); ++file) {
        sources.add(path, std::move(families[file].text));
        program.units.push_back({parse(sources, file, faults), path, families[file].name, {}});
        for (uint32_t other = 0; other < families.size(); ++other) {
            program.units.back().imports.push_back(other);
        }
    }
    return program;
}

} // namespace tlvc
