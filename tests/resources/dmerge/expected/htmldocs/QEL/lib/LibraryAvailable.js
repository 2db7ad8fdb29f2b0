WWHFrame = eval("window.self");
LibraryAvailable = "true";

