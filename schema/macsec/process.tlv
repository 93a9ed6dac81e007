//! Process and time; no message carries either type.

enum process_id = 1716

/// A point in time as two 32-bit numbers.
struct timestamp = 1004 {
    uint32  value_1
    uint32  value_2
}
