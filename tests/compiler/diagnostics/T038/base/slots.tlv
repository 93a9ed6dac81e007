enum slot = 1358
