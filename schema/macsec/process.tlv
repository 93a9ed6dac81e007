//! Process and time, which no message carries.

/// Identifier of a process.
enum process_id = 1716  // tlvc: W002 because no type of any family holds it

/// Point in time, as two 32-bit numbers.
struct timestamp = 1004 {
    uint32  value_1
    uint32  value_2
}
