prefix zel
