QELAddBookVar("DocTitle","General help");
QELAddBookVar("Version","@VERSION@");
QELAddBookVar("Licence","MIT License, © 2026 The libolh authors");
QELAddTopic(["qel_help_001","qel_help_001.htm","About the help you are reading",""]);
QELAddTopic(["qel_help_002","qel_help_002.htm","Choosing the browser and the PDF reader",""]);
QELAddTopic(["qel_help_003","qel_help_003.htm","Where documents are looked for",""]);
QELAddTopic(["qel_help_014","qel_help_014.htm","The document that you asked for was not found",""]);
