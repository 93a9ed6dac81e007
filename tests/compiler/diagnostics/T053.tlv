enum state = 1301
message report key 17 { state now }
message key key 017 { state now }
message alarm key 18 { state key }
