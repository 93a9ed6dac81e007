// JSON-RPC as the protocol has it: a header that says how long the message is, then the message.
#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <stdexcept>
#include <string>

namespace tlvc::lsp {

using JsonValue = nlohmann::json;

// Thrown to answer with an error instead of a result. The codes are those of the protocol.
struct Refusal : std::runtime_error {
    Refusal(int number, const std::string &message) : std::runtime_error(message), code(number) {}
    int code;
};
inline constexpr int not_json = -32700, invalid_request = -32600, method_not_found = -32601,
                     invalid_params = -32602, internal_error = -32603, request_failed = -32803,
                     not_initialized = -32002;

// The messages that arrive on a descriptor.
class Messages {
public:
    explicit Messages(int descriptor) : descriptor_(descriptor) {}

    // Waits. True if a message or the end has arrived in that time.
    bool arrive_within(std::chrono::milliseconds time) const;
    bool at_end();

    // Throws a Refusal for what is no message; the next one can be read all the same.
    JsonValue read();

private:
    size_t read_header();
    std::string read_line();
    std::string read_bytes(size_t count);
    void skip(size_t count);
    bool fill();

    int descriptor_;
    std::string buffer_;
    size_t used_ = 0; // of the buffer
    bool ended_ = false;
};

} // namespace tlvc::lsp
