//! Of old messages.

/// A letter.
struct letter = 40000 { char latin }
