#include "compiler/lsp/lsp.h"

#include "compiler/language/format.h"
#include "compiler/language/parser.h"
#include "compiler/lsp/documents.h"
#include "compiler/model/layout.h"
#include "compiler/model/names.h"
#include "compiler/model/wire_layout.h"

#include <algorithm>
#include <charconv>
#include <iostream>

namespace tlvc::lsp {

namespace {

constexpr size_t longest_message = 16 << 20;

// Its numbers are those of the protocol.
struct Refusal : std::runtime_error {
    Refusal(int number, const std::string &message) : std::runtime_error(message), code(number) {}
    int code;
};
constexpr int not_json = -32700, invalid_request = -32600, method_not_found = -32601, invalid_params = -32602,
              internal_error = -32603, not_initialized = -32002;

// The length in a header. Throws a Refusal if it has none.
size_t read_header(std::istream &in) {
    constexpr std::string_view name = "Content-Length: ";
    size_t length = 0;
    bool known = false;
    for (std::string line; std::getline(in, line) && line != "\r" && !line.empty();) {
        if (line.starts_with(name)) {
            known = std::from_chars(&line[name.size()], line.data() + line.size(), length).ec == std::errc();
        }
    }
    if (!known) {
        throw Refusal(not_json, "a header without a Content-Length");
    }
    return length;
}

// Throws a Refusal for what is no message; the next one can be read all the same.
Json read_message(std::istream &in) {
    const size_t length = read_header(in);
    if (length > longest_message) {
        in.ignore(static_cast<std::streamsize>(std::min<size_t>(length, INT64_MAX)) - 1);
        in.get(); // 'ignore' would wait for what follows
        throw Refusal(invalid_request, fmt::format("more than {} bytes", longest_message));
    }
    std::string text(length, '\0');
    in.read(text.data(), static_cast<std::streamsize>(length));
    Json message = Json::parse(text, nullptr, false);
    if (message.is_discarded()) {
        throw Refusal(not_json, fmt::format("the {} bytes are not JSON", length));
    }
    return message;
}

// Directly behind it too, where a cursor is that has just typed the name.
bool covers(Span span, uint32_t offset) { return span.begin <= offset && offset <= span.end; }

const syntax::Name *type_named_at(const syntax::File &file, uint32_t offset) {
    for (const syntax::Declaration &each : file.declarations) {
        std::vector<const syntax::Name *> names{&each.name, &each.element, &each.count, &each.selector};
        if (each.enclosing) {
            names.push_back(&*each.enclosing);
        }
        for (const syntax::Member &member : each.members) {
            names.push_back(&member.type);
        }
        for (const syntax::Name *name : names) {
            if (!name->text.empty() && covers(name->span, offset)) {
                return name;
            }
        }
    }
    return nullptr;
}

const syntax::Declaration *declaration_of(const Program &program, std::string_view name) {
    for (const Unit &unit : program.units) {
        for (const syntax::Declaration &each : unit.syntax.declarations) {
            if (each.name.text == name) {
                return &each;
            }
        }
    }
    return nullptr;
}

// Markdown that reads well as plain text. Empty for a name that means nothing.
std::string describe(const Analysis &analysis, std::string_view name) {
    for (const wire::Scalar &each : wire::scalars) {
        if (each.name == name) {
            return fmt::format("Scalar, {} in C.\n\nWire: tag {}, {} bytes.\n\nRecord: {} bytes.",
                               each.record, each.tag, wire::header_size + each.width, each.width);
        }
    }
    const syntax::Declaration *const declaration = declaration_of(analysis.program, name);
    if (declaration == nullptr) {
        return "";
    }
    const std::string text = fmt::format(
        "```tlv\n{}\n```\n\n", analysis.sources.text(declaration->span)); // its documentation included
    if (!analysis.schema) {
        return text + "Sizes are known when the faults are gone.";
    }
    const auto &types = analysis.schema->types;
    const auto type =
        std::find_if(types.begin(), types.end(), [&](const Type &each) { return each.name == name; });
    const RecordLayout wide = Layouts(lp64).of(*type);
    const RecordLayout narrow = Layouts(ilp32).of(*type);
    return fmt::format(
        "{}```text\n{}\n```\n\nRecord {}: {} bytes aligned to {}, and {} to {} where pointers have 4.", text,
        fmt::join(describe_wire(*type), "\n"), names::record(*type), wide.size, wide.alignment, narrow.size,
        narrow.alignment);
}

class Server {
public:
    Server(std::istream &in, std::ostream &out, const ImportPath &import_path)
        : in_(in), out_(out), documents_(import_path) {}

    int run() {
        while (!exited_ && in_.peek() != std::istream::traits_type::eof()) {
            try {
                take(read_message(in_));
            } catch (const Refusal &refusal) {
                refuse(nullptr, refusal.code, refusal.what());
            }
        }
        return exited_ && shut_down_ ? 0 : 1;
    }

private:
    using Method = Json (Server::*)(const Json &params);
    static const std::map<std::string, Method> methods;

    void take(const Json &message) {
        const Json id = message.is_object() ? message.value("id", Json()) : Json();
        if (!message.is_object() || !message.value("method", Json("")).is_string() || id.is_structured()) {
            throw Refusal(invalid_request, "a message is an object with a 'method'");
        }
        const std::string method = message.value("method", "");
        if (message.contains("id") && !method.empty()) { // without a method it answers, but nothing was asked
            answer(id, method, message.value("params", Json::object()));
        } else {
            act(method, message.value("params", Json::object()));
        }
    }

    void answer(const Json &id, const std::string &method, const Json &params) {
        try {
            const auto found = methods.find(method);
            if (!initialized_ && method != "initialize") {
                throw Refusal(not_initialized, "'initialize' comes first");
            }
            if (shut_down_) {
                throw Refusal(invalid_request, "only 'exit' follows 'shutdown'");
            }
            if (found == methods.end()) {
                throw Refusal(method_not_found, fmt::format("there is no method '{}'", method));
            }
            write({{"id", id}, {"result", (this->*found->second)(params)}});
        } catch (const Refusal &refusal) {
            refuse(id, refusal.code, refusal.what());
        } catch (const Json::exception &error) {
            refuse(id, invalid_params, error.what());
        } catch (const std::exception &error) {
            refuse(id, internal_error, error.what());
        }
    }

    // A notification has no answer: faults go to the client's log, and unknown ones are no fault.
    void act(const std::string &method, const Json &params) {
        exited_ = method == "exit";
        const auto found = methods.find(method);
        if (initialized_ && found != methods.end()) {
            try {
                (this->*found->second)(params);
            } catch (const std::exception &error) {
                notify("window/logMessage", {{"type", 1}, {"message", method + ": " + error.what()}});
            }
        }
    }

    // What is not UTF-8 in a schema file is replaced, because JSON cannot have it.
    void write(Json message) {
        message["jsonrpc"] = "2.0";
        const std::string text = message.dump(-1, ' ', false, Json::error_handler_t::replace);
        out_ << "Content-Length: " << text.size() << "\r\n\r\n" << text << std::flush;
    }
    void refuse(const Json &id, int code, const char *why) {
        write({{"id", id}, {"error", {{"code", code}, {"message", why}}}});
    }
    void notify(const char *method, Json params) {
        write({{"method", method}, {"params", std::move(params)}});
    }

    Json initialize(const Json & /*params*/) {
        initialized_ = true;
        constexpr int full_texts = 1;
        return {{"capabilities",
                 {{"textDocumentSync", {{"openClose", true}, {"change", full_texts}}},
                  {"hoverProvider", true},
                  {"definitionProvider", true},
                  {"documentFormattingProvider", true}}},
                {"serverInfo", {{"name", "tlvc"}}}};
    }

    Json shutdown(const Json & /*params*/) {
        shut_down_ = true;
        return nullptr;
    }

    const Analysis &analysis(const Json &params) const {
        const std::string uri = params.at("textDocument").at("uri");
        const Analysis *const found = documents_.find(uri);
        if (found == nullptr || found->program.units.empty()) {
            throw Refusal(invalid_params, fmt::format("'{}' is not open or cannot be read", uri));
        }
        return *found;
    }

    static uint32_t offset(const Analysis &analysis, const Json &params) {
        return offset_of(analysis.sources.text(0), params.at("position"));
    }

    Json hover(const Json &params) {
        const Analysis &document = analysis(params);
        const auto *const name =
            type_named_at(document.program.units.front().syntax, offset(document, params));
        const std::string text = name != nullptr ? describe(document, name->text) : "";
        const Json contents = {{"kind", "markdown"}, {"value", text}};
        return text.empty() ? Json() : Json{{"contents", contents}};
    }

    Json definition(const Json &params) {
        const Analysis &document = analysis(params);
        const Unit &unit = document.program.units.front();
        const uint32_t at = offset(document, params);
        for (size_t i = 0; i < unit.imports.size() && unit.syntax.imports_found; ++i) {
            if (covers(unit.syntax.imports[i].span, at)) {
                return documents_.location(document, {unit.imports[i], 0, 0});
            }
        }
        const auto *const name = type_named_at(unit.syntax, at);
        const auto *const declaration =
            name != nullptr ? declaration_of(document.program, name->text) : nullptr;
        return declaration != nullptr ? documents_.location(document, declaration->name.span) : Json();
    }

    // A file with faults of syntax stays as it is.
    Json formatting(const Json &params) {
        const Analysis &document = analysis(params);
        const std::string_view before = document.sources.text(0);
        Diagnostics faults;
        const syntax::File syntax = parse(document.sources, 0, faults);
        if (faults.any()) {
            return nullptr;
        }
        const Span whole{0, 0, static_cast<uint32_t>(before.size())};
        const std::string text = format(syntax, document.sources);
        const Json edit = {{"range", range(document.sources, whole)}, {"newText", text}};
        return text == before ? Json::array() : Json::array({edit});
    }

    Json opened(const Json &params) {
        const Json &document = params.at("textDocument");
        documents_.put(document.at("uri"), document.at("text"));
        return publish();
    }

    Json changed(const Json &params) {
        const std::string uri = params.at("textDocument").at("uri");
        const Json &changes = params.at("contentChanges");
        if (documents_.find(uri) != nullptr) {
            documents_.put(uri, changes.at(changes.size() - 1).at("text"));
        }
        return publish();
    }

    Json closed(const Json &params) {
        documents_.remove(params.at("textDocument").at("uri"));
        return publish();
    }

    // What differs from what the client was told before.
    Json publish() {
        std::map<std::string, Json> found = documents_.diagnostics();
        for (const auto &[uri, list] : published_) {
            found.try_emplace(uri, Json::array());
        }
        for (const auto &[uri, list] : found) {
            const auto before = published_.find(uri);
            if (before == published_.end() || before->second != list) {
                notify("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", list}});
            }
        }
        published_ = std::move(found);
        return nullptr;
    }

    std::istream &in_;
    std::ostream &out_;
    Documents documents_;
    std::map<std::string, Json> published_; // by URI
    bool initialized_ = false;
    bool shut_down_ = false;
    bool exited_ = false;
};

const std::map<std::string, Server::Method> Server::methods = {
    {"initialize", &Server::initialize},
    {"shutdown", &Server::shutdown},
    {"textDocument/hover", &Server::hover},
    {"textDocument/definition", &Server::definition},
    {"textDocument/formatting", &Server::formatting},
    {"textDocument/didOpen", &Server::opened},
    {"textDocument/didChange", &Server::changed},
    {"textDocument/didClose", &Server::closed},
};

} // namespace

int serve(std::istream &in, std::ostream &out, const ImportPath &import_path) {
    return Server(in, out, import_path).run();
}

} // namespace tlvc::lsp
