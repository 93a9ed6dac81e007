//! Selectors and elements are uses, too.

/// Used by a member.
enum state = 33001

/// Left over.
enum old_state = 33002 { on = 1 }

/// Of a union.
enum kind = 33003

/// Of an array.
enum item = 33004

/// Chosen by a kind.
union choice by kind chosen_by { 1: state first }

/// Several.
array items of item[4]
