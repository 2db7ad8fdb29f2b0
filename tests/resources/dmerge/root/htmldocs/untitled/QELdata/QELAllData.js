QELAddBookVar("DocTitle");
