//! A file's own words are about no type in particular.

/// Documented.
struct port = 33001 { uint16 slot }

// Remarks are for the file's readers alone.
struct line = 33002 {
    /// A member's words are the member's.
    uint16 slot
    bytes[16] name
}
