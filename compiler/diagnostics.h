// Every fault the compiler can find, in one catalogue, and the collection of those it has found.
#pragma once

#include "source.h"

#include <algorithm>
#include <fmt/format.h>
#include <span>

namespace tlvc {

// The number is the code: T001 is 1, W001 is 201. Codes are published, so new ones go to the end of their kind.
enum class Fault : uint8_t {
    UnexpectedCharacter = 1,
    UnterminatedString = 2,
    MalformedNumber = 3,
    MisplacedDoc = 4,
    UnexpectedToken = 5,
    UnclosedBody = 6,
    LateImport = 7,
    ImportNotFound = 8,
    CircularImport = 9,
    FamilyName = 10,
    FamilySplit = 11,
    UndefinedType = 12,
    TypeNotImported = 13,
    DuplicateName = 14,
    DuplicateTag = 15,
    TagRange = 16,
    KeywordName = 17,
    DuplicateMember = 18,
    EmptyBody = 19,
    MessageUsed = 20,
    MessageMember = 21,
    ArrayElement = 22,
    AlternativeType = 23,
    ZeroCapacity = 24,
    LargeCapacity = 25,
    CountType = 26,
    MissingCount = 27,
    WrongCount = 28,
    SelectorType = 29,
    MissingSelector = 30,
    WrongSelector = 31,
    DuplicateValue = 32,
    LargeValue = 33,
    UnknownAttribute = 34,
    MisplacedAttribute = 35,
    EnclosingRecord = 36,
    TypeCycle = 37,
    FamilyCycle = 38,
    FixedSize = 39,
    MemberNamedAsType = 40,
    UnknownEnumerator = 41,
    DuplicateEnumerator = 42,
    TakenName = 43,
    NameGeneratedTwice = 44,
    TooDeep = 45,
    LongPath = 46,

    // Allowed, and yet hardly meant.
    ArrayNeverFull = 201,
    UnusedEnumeration = 202,
    UndocumentedType = 203,
};

enum class Severity { Error, Warning };

struct CatalogueEntry {
    Fault fault;
    std::string_view title;
    std::string_view message;     // a format string
    std::string_view explanation; // what the rule is for, with an example of the remedy
};

std::span<const CatalogueEntry> catalogue();
const CatalogueEntry &entry(Fault fault);
std::string code(Fault fault); // "T012"
Severity severity(Fault fault);

struct Diagnostic {
    struct Note {
        Span span;
        std::string text;
    };

    Fault fault;
    Severity severity;
    Span span;
    std::string message;
    std::vector<Note> notes;
    std::vector<std::string> helps;

    Diagnostic &note(Span place, std::string text) {
        notes.push_back({place, std::move(text)});
        return *this;
    }
    Diagnostic &help(std::string text) {
        helps.push_back(std::move(text));
        return *this;
    }
    // "did you mean 'x'?", if a candidate is near enough.
    Diagnostic &suggest(std::string_view name, const std::vector<std::string_view> &candidates);
};

class Diagnostics {
public:
    // The result is good until the next report.
    template <typename... Args>
    Diagnostic &report(Fault fault, Span span, const Args &...args) {
        std::string message = fmt::vformat(entry(fault).message, fmt::make_format_args(args...));
        found_.push_back({fault, severity(fault), span, std::move(message), {}, {}});
        return found_.back();
    }

    void append(const Diagnostics &others) {
        found_.insert(found_.end(), others.found_.begin(), others.found_.end());
    }
    size_t count(Severity severity) const {
        return static_cast<size_t>(std::count_if(
            found_.begin(), found_.end(), [=](const auto &each) { return each.severity == severity; }));
    }
    bool any() const { return count(Severity::Error) != 0; }
    void refuse_warnings() {
        for (Diagnostic &each : found_) {
            each.severity = Severity::Error;
        }
    }
    std::vector<Diagnostic> in_file_order() const;

private:
    std::vector<Diagnostic> found_;
};

} // namespace tlvc
