//! A file's own words are about no type in particular.

/// Documented.
struct port = 1001 { uint16 slot }

// Remarks are for the file's readers alone.
struct line = 1002 {
    /// A member's words are the member's.
    uint16 slot
}
