// Every fault the compiler can find, in one catalogue, and the collection of those it has found.
#pragma once

#include "source.h"

#include <fmt/format.h>
#include <span>

namespace tlvc {

// The position in this list is the code: the first is T001. Codes are published, so new ones go to the end.
enum class Fault : uint8_t {
    UnexpectedCharacter,
    UnterminatedString,
    MalformedNumber,
    MisplacedDoc,
    UnexpectedToken,
    UnclosedBody,
    LateImport,
    ImportNotFound,
    CircularImport,
    FamilyName,
    FamilySplit,
    UndefinedType,
    TypeNotImported,
    DuplicateName,
    DuplicateTag,
    TagRange,
    KeywordName,
    DuplicateMember,
    EmptyBody,
    MessageUsed,
    MessageMember,
    ArrayElement,
    AlternativeType,
    ZeroCapacity,
    LargeCapacity,
    CountType,
    MissingCount,
    WrongCount,
    SelectorType,
    MissingSelector,
    WrongSelector,
    DuplicateValue,
    LargeValue,
    UnknownAttribute,
    MisplacedAttribute,
    EnclosingRecord,
    TypeCycle,
    FamilyCycle,
    FixedSize,
    MemberNamedAsType,
};

struct CatalogueEntry {
    Fault fault;
    std::string_view title;
    std::string_view message;     // a format string
    std::string_view explanation; // what the rule is for, with an example of the remedy
};

std::span<const CatalogueEntry> catalogue();
const CatalogueEntry &entry(Fault fault);
std::string code(Fault fault); // "T012"

struct Diagnostic {
    struct Note {
        Span span;
        std::string text;
    };

    Fault fault;
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
};

class Diagnostics {
public:
    // The result is good until the next report.
    template <typename... Args>
    Diagnostic &report(Fault fault, Span span, const Args &...args) {
        std::string message = fmt::vformat(entry(fault).message, fmt::make_format_args(args...));
        found_.push_back({fault, span, std::move(message), {}, {}});
        return found_.back();
    }

    void append(const Diagnostics &others) {
        found_.insert(found_.end(), others.found_.begin(), others.found_.end());
    }
    bool any() const { return !found_.empty(); }
    std::vector<Diagnostic> in_file_order() const;

private:
    std::vector<Diagnostic> found_;
};

} // namespace tlvc
