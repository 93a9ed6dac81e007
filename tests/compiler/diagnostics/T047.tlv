# What peers and programs rely on.

family diagnostics

enum color = 1001, 12 bytes, record 8 aligned 4
