#include "compiler/lsp/lsp.h"

#include "base/files.h"
#include "compiler/language/format.h"
#include "compiler/language/parser.h"
#include "compiler/lsp/actions.h"
#include "compiler/lsp/completion.h"
#include "compiler/lsp/messages.h"
#include "compiler/lsp/rename.h"
#include "compiler/lsp/symbols.h"
#include "compiler/model/layout.h"
#include "compiler/model/names.h"
#include "compiler/model/wire_description.h"

#include <algorithm>
#include <optional>
#include <ostream>

namespace tlvc::lsp {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds pause_in_typing{150};

// The parameter at a path like "/textDocument/uri". Throws a Refusal unless it is there and of that type.
const JsonValue &parameter(const JsonValue &params, const std::string &path, JsonValue::value_t type) {
    const JsonValue::json_pointer pointer(path);
    if (!params.contains(pointer) || params.at(pointer).type() != type) {
        const std::string_view what = type == JsonValue::value_t::string            ? "a string"
                                      : type == JsonValue::value_t::number_unsigned ? "a number from 0"
                                                                                    : "an array";
        throw Refusal(invalid_params, fmt::format("the parameters need {} as '{}'", what, path.substr(1)));
    }
    return params.at(pointer);
}

std::string text_in(const JsonValue &params, const std::string &path) {
    return parameter(params, path, JsonValue::value_t::string);
}

uint64_t number_in(const JsonValue &params, const std::string &path) {
    return parameter(params, path, JsonValue::value_t::number_unsigned);
}

std::string uri_in(const JsonValue &params) { return text_in(params, "/textDocument/uri"); }

// Markdown that reads well as plain text. Empty for a name that is no type's.
std::string hover_text(const Analysis &analysis, const Mention &mention) {
    for (const wire::Scalar &each : wire::scalars) {
        if (mention.names_type && each.name == mention.text) {
            return fmt::format("Scalar, {} in C.\n\nWire: tag {}, {} bytes.\n\nRecord: {} bytes.",
                               each.record, each.tag, wire::header_size + each.width, each.width);
        }
    }
    if (mention.type == nullptr) {
        return "";
    }
    const std::string text = fmt::format(
        "```tlv\n{}\n```\n\n", analysis.sources.text(mention.type->span)); // its documentation included
    if (!analysis.schema) {
        return text + "Sizes are known when the faults are gone.";
    }
    const auto &types = analysis.schema->types;
    const auto type = std::ranges::find(types, mention.text, &Type::name);
    const RecordLayout wide = Layouts(lp64).of(*type);
    const RecordLayout narrow = Layouts(ilp32).of(*type);
    return fmt::format(
        "{}```text\n{}\n```\n\nRecord {}: {} bytes aligned to {}, and {} to {} where pointers have 4.", text,
        fmt::join(describe_wire(*type), "\n"), names::record(*type), wide.size, wide.alignment, narrow.size,
        narrow.alignment);
}

class Server {
public:
    Server(int in, std::ostream &out, const Library &library, const ImportPath &import_path)
        : in_(in), out_(out), documents_(library, import_path) {}

    int run() {
        while (!exited_) {
            if (publish_at_ && !in_.arrive_within(time_left())) {
                publish();
            } else if (in_.at_end()) {
                break;
            } else {
                take_next();
            }
        }
        return exited_ && shut_down_ ? 0 : 1;
    }

private:
    static constexpr const char *internal_text = "an internal fault of tlvc";
    using Method = JsonValue (Server::*)(const JsonValue &params);
    static const std::map<std::string, Method> methods;

    // Until what has changed is to be compiled, if nothing else happens before.
    std::chrono::milliseconds time_left() const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*publish_at_ - Clock::now());
        return std::max(left, std::chrono::milliseconds(0));
    }

    void take_next() {
        try {
            take(in_.read());
        } catch (const Refusal &refusal) {
            refuse(nullptr, refusal.code, refusal.what());
        }
    }

    void take(const JsonValue &message) {
        const JsonValue id = message.is_object() ? message.value("id", JsonValue()) : JsonValue();
        if (!message.is_object() || !message.value("method", JsonValue("")).is_string() ||
            id.is_structured()) {
            throw Refusal(invalid_request, "a message is an object with a 'method'");
        }
        const std::string method = message.value("method", "");
        if (message.contains("id") && !method.empty()) { // without a method it answers, but nothing was asked
            answer(id, method, message.value("params", JsonValue::object()));
        } else {
            act(method, message.value("params", JsonValue::object()));
        }
    }

    void answer(const JsonValue &id, const std::string &method, const JsonValue &params) {
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
        } catch (const std::exception &) {
            refuse(id, internal_error, internal_text);
        }
    }

    // A notification has no answer: faults go to the client's log, and unknown ones are no fault.
    void act(const std::string &method, const JsonValue &params) {
        exited_ = method == "exit";
        const auto found = methods.find(method);
        if (initialized_ && found != methods.end()) {
            try {
                (this->*found->second)(params);
            } catch (const Refusal &refusal) {
                log(method, refusal.what());
            } catch (const std::exception &) {
                log(method, internal_text);
            }
        }
    }

    // Bytes of a schema file that are no UTF-8 are replaced, because JSON cannot have them.
    void write(JsonValue message) {
        message["jsonrpc"] = "2.0";
        const std::string text = message.dump(-1, ' ', false, JsonValue::error_handler_t::replace);
        out_ << "Content-Length: " << text.size() << "\r\n\r\n" << text << std::flush;
    }
    void refuse(const JsonValue &id, int code, const char *why) {
        write({{"id", id}, {"error", {{"code", code}, {"message", why}}}});
    }
    void log(const std::string &method, const char *why) {
        notify("window/logMessage", {{"type", 1}, {"message", method + ": " + why}});
    }
    void notify(const char *method, JsonValue params) {
        write({{"method", method}, {"params", std::move(params)}});
    }

    JsonValue initialize(const JsonValue &params) {
        for (size_t i = 0;; ++i) {
            const std::string path = fmt::format("/workspaceFolders/{}/uri", i);
            if (!params.contains(JsonValue::json_pointer(path))) {
                break;
            }
            documents_.add_folder(text_in(params, path));
        }
        initialized_ = true;
        constexpr int full_texts = 1;
        return {{"capabilities",
                 {{"textDocumentSync", {{"openClose", true}, {"change", full_texts}, {"save", true}}},
                  {"hoverProvider", true},
                  {"definitionProvider", true},
                  {"referencesProvider", true},
                  {"renameProvider", {{"prepareProvider", true}}},
                  {"completionProvider", {{"triggerCharacters", {"@", "\"", "/"}}}},
                  {"documentSymbolProvider", true},
                  {"workspaceSymbolProvider", true},
                  {"codeActionProvider", {{"codeActionKinds", JsonValue::array({"quickfix"})}}},
                  {"documentFormattingProvider", true}}},
                {"serverInfo", {{"name", "tlvc"}}}};
    }

    JsonValue shutdown(const JsonValue & /*params*/) {
        shut_down_ = true;
        return nullptr;
    }

    Document document(const JsonValue &params) {
        const std::string uri = uri_in(params);
        if (!documents_.is_open(uri)) {
            throw Refusal(invalid_params, fmt::format("'{}' is not open", uri));
        }
        try {
            return documents_.find(uri);
        } catch (const tlvmsg::base::IoError &error) {
            throw Refusal(invalid_params, fmt::format("'{}' cannot be compiled: {}", uri, error.what()));
        }
    }

    static uint32_t offset(const Document &document, const JsonValue &params,
                           const std::string &path = "/position") {
        const uint64_t line = number_in(params, path + "/line");
        return offset_of(document.text(), line, number_in(params, path + "/character"));
    }

    JsonValue hover(const JsonValue &params) {
        const Document at = document(params);
        const std::optional<Mention> name = mention_at(at, offset(at, params));
        const std::string text = name ? hover_text(at.analysis, *name) : "";
        const JsonValue contents = {{"kind", "markdown"}, {"value", text}};
        return text.empty() ? JsonValue() : JsonValue{{"contents", contents}};
    }

    JsonValue definition(const JsonValue &params) {
        const Document at = document(params);
        const uint32_t cursor = offset(at, params);
        for (const syntax::Import &each : at.unit().syntax.imports) {
            const auto found = at.unit().leads_to.find(each.path.span.begin);
            if (covers(each.span, cursor) && found != at.unit().leads_to.end()) {
                return documents_.location(at.analysis, {found->second, 0, 0});
            }
        }
        const std::optional<Mention> name = mention_at(at, cursor);
        return name && name->is_declared() ? documents_.location(at.analysis, name->declared) : JsonValue();
    }

    JsonValue references(const JsonValue &params) {
        const Document at = document(params);
        const std::optional<Mention> name = mention_at(at, offset(at, params));
        JsonValue places = JsonValue::array();
        if (name && name->is_declared()) {
            const bool all = params.value("/context/includeDeclaration"_json_pointer, true);
            const JsonValue declaration = documents_.location(at.analysis, name->declared);
            for (const auto &[file, uses] : uses_of(documents_, at.analysis, *name)) {
                for (const auto &[begin, use] : uses) {
                    const JsonValue place = documents_.location(*use.analysis, use.span);
                    if (all || place != declaration) {
                        places.push_back(place);
                    }
                }
            }
        }
        return places;
    }

    JsonValue prepare_rename(const JsonValue &params) {
        const Document at = document(params);
        const Mention name = renamable(documents_, at, offset(at, params));
        return {{"range", range(at.analysis.sources, name.span)}, {"placeholder", name.text}};
    }

    JsonValue rename(const JsonValue &params) {
        const Document at = document(params);
        return lsp::rename(documents_, at, offset(at, params), text_in(params, "/newName"));
    }

    JsonValue completion(const JsonValue &params) {
        const Document at = document(params);
        return lsp::completion(documents_, at, offset(at, params));
    }

    JsonValue document_symbol(const JsonValue &params) { return symbols_of(document(params)); }

    JsonValue workspace_symbol(const JsonValue &params) {
        return symbols_like(documents_, text_in(params, "/query"));
    }

    JsonValue code_action(const JsonValue &params) {
        const Document at = document(params);
        return quick_fixes(documents_, at, offset(at, params, "/range/start"),
                           offset(at, params, "/range/end"));
    }

    // A file with faults of syntax stays as it is.
    JsonValue formatting(const JsonValue &params) {
        const Document at = document(params);
        Diagnostics faults;
        const syntax::File syntax = parse(at.analysis.sources, at.file, faults);
        if (faults.any()) {
            return nullptr;
        }
        const Span whole{at.file, 0, static_cast<uint32_t>(at.text().size())};
        const std::string text = format(syntax, at.analysis.sources);
        const JsonValue edit = {{"range", range(at.analysis.sources, whole)}, {"newText", text}};
        return text == at.text() ? JsonValue::array() : JsonValue::array({edit});
    }

    JsonValue opened(const JsonValue &params) {
        const std::string uri = uri_in(params);
        documents_.put(uri, text_in(params, "/textDocument/text"));
        return publish_soon();
    }

    // The last one holds if there are several whole texts.
    JsonValue changed(const JsonValue &params) {
        const std::string uri = uri_in(params);
        const size_t count = parameter(params, "/contentChanges", JsonValue::value_t::array).size();
        const std::string text =
            text_in(params, fmt::format("/contentChanges/{}/text", std::max<size_t>(count, 1) - 1));
        if (documents_.is_open(uri)) {
            documents_.put(uri, text);
        }
        return publish_soon();
    }

    JsonValue closed(const JsonValue &params) {
        documents_.remove(uri_in(params));
        return publish_soon();
    }

    JsonValue changed_on_disk(const JsonValue & /*params*/) {
        documents_.files_have_changed();
        return publish_soon();
    }

    JsonValue publish_soon() {
        publish_at_ = Clock::now() + pause_in_typing;
        return nullptr;
    }

    // Publishes the diagnostics that differ from those published before.
    void publish() {
        publish_at_.reset();
        std::map<std::string, JsonValue> found = documents_.diagnostics();
        for (const auto &[uri, list] : published_) {
            found.try_emplace(uri, JsonValue::array());
        }
        for (const auto &[uri, list] : found) {
            const auto before = published_.find(uri);
            if (before == published_.end() || before->second != list) {
                notify("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", list}});
            }
        }
        published_ = std::move(found);
    }

    Messages in_;
    std::ostream &out_;
    Documents documents_;
    std::map<std::string, JsonValue> published_;  // by URI
    std::optional<Clock::time_point> publish_at_; // when something has changed since
    bool initialized_ = false;
    bool shut_down_ = false;
    bool exited_ = false;
};

const std::map<std::string, Server::Method> Server::methods = {
    {"initialize", &Server::initialize},
    {"shutdown", &Server::shutdown},
    {"textDocument/hover", &Server::hover},
    {"textDocument/definition", &Server::definition},
    {"textDocument/references", &Server::references},
    {"textDocument/prepareRename", &Server::prepare_rename},
    {"textDocument/rename", &Server::rename},
    {"textDocument/completion", &Server::completion},
    {"textDocument/documentSymbol", &Server::document_symbol},
    {"textDocument/codeAction", &Server::code_action},
    {"workspace/symbol", &Server::workspace_symbol},
    {"textDocument/formatting", &Server::formatting},
    {"textDocument/didOpen", &Server::opened},
    {"textDocument/didChange", &Server::changed},
    {"textDocument/didClose", &Server::closed},
    {"textDocument/didSave", &Server::changed_on_disk},
    {"workspace/didChangeWatchedFiles", &Server::changed_on_disk},
};

} // namespace

int serve(int in, std::ostream &out, const Library &library, const ImportPath &import_path) {
    return Server(in, out, library, import_path).run();
}

} // namespace tlvc::lsp
