QELAddBookVar("DocTitle","Never listed");
