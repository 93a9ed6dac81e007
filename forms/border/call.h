// The border between callers in C and the work that is done for them: every exported function is a Call.
#pragma once

#include "base/reserved_bits.h"
#include "forms/border/text_fault.h"

#include <tlvmsg/record.h>

#include <cstring>
#include <exception>

namespace tlvmsg::forms {

// Thrown when the caller's sink wants no more. The sink knows that, so there is no fault.
struct Stopped {};

using base::reserved_bits;

// It is told what the caller passed, and refuses what is missing or means nothing before any work is done. What the work
// throws becomes the caller's fault.
class Call {
public:
    explicit Call(tlvmsg_text_fault *fault) : fault_(fault) {}

    // An argument that must not be null.
    template <class Pointer>
    Call &needs(const char *name, Pointer argument) {
        if (argument == nullptr && missing_ == nullptr) {
            missing_ = name;
        }
        return *this;
    }

    // So many bytes or items, which may be null when there are none.
    Call &reads(const char *name, const void *first, size_t count) {
        return count > 0 ? needs(name, first) : *this;
    }

    // A structure that ends in reserved words; null stands for its defaults.
    template <class Options>
    Call &takes(const char *name, const Options *options) {
        if (reserved_bits(options) != 0) {
            meaningless_ = name;
        }
        return *this;
    }

    // Where a result goes, which is zero until the work is done.
    template <class Result>
    Call &hands_out(const char *name, Result *result) {
        return may_hand_out(result).needs(name, result);
    }

    // The same for a result that the caller may not want.
    template <class Result>
    Call &may_hand_out(Result *result) {
        if (result != nullptr) {
            *result = {};
        }
        return *this;
    }

    // The record that the work fills: it is zero before, and again when the work fails.
    Call &fills(const tlvmsg_type *type, void *record) {
        needs("type", type).needs("record", record);
        type_ = type;
        record_ = record;
        clear_record();
        return *this;
    }

    // Does the work, and says whether it succeeded. Faults have their place in the text, which may be one that the work
    // makes.
    template <class Work, class Text = std::string_view>
    bool run(Work work, const Text &text = {}) {
        if (is_refused()) {
            return false;
        }
        try {
            work();
            return true;
        } catch (const TextFault &found) {
            const std::string_view before = std::string_view(text).substr(0, found.offset);
            store_fault(fault_, found.code, found.path, found.message, before);
        } catch (const Stopped &) {
        } catch (const std::exception &) { // std::bad_alloc, or a length that no string can have
            store_fault(fault_, TLVMSG_TEXT_OUT_OF_MEMORY, "$", "there is no more memory");
        }
        if (record_ != nullptr) {
            tlvmsg_release(type_, record_);
            clear_record();
        }
        return false;
    }

private:
    bool is_refused() {
        if (fault_ != nullptr) {
            *fault_ = {};
        }
        if (missing_ != nullptr) {
            store_fault(fault_, TLVMSG_TEXT_NULL_ARGUMENT, missing_, "a null pointer was passed");
        } else if (meaningless_ != nullptr) {
            store_fault(fault_, TLVMSG_TEXT_RESERVED_WORD, meaningless_, "a reserved word is not zero");
        }
        return missing_ != nullptr || meaningless_ != nullptr;
    }

    void clear_record() {
        if (type_ != nullptr && record_ != nullptr) {
            std::memset(record_, 0, type_->size);
        }
    }

    tlvmsg_text_fault *fault_;
    const char *missing_ = nullptr;     // the first argument that is null and must not be
    const char *meaningless_ = nullptr; // one with a reserved word that is not zero
    const tlvmsg_type *type_ = nullptr;
    void *record_ = nullptr;
};

} // namespace tlvmsg::forms
