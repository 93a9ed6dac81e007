enum session_kind = 1001
