QELAddBookVar("DocTitle","An older title");
QELAddTopic(["intro","intro.htm"]);
QELAddBookVar("DocTitle","Guide for 'all'");
