//! Selectors and elements are uses, too.

/// Used by a member.
enum state = 1001

/// Left over.
enum old_state = 1002 { on = 1 }

/// Of a union.
enum kind = 1003

/// Of an array.
enum item = 1004

/// Chosen by a kind.
union choice by kind chosen_by { 1: state first }

/// Several.
array items of item[4]
