//! Whose tags are whose.

/// The library's, or soon.
struct port = 32767 { uint16 slot }

/// Never the library's.
struct line = 32768 { uint16 slot }

/// Used.
enum kind = 1357

/// Of a kind.
struct of_kind = 32769 { kind kind_of_it }
