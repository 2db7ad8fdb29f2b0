QELAddBookVar("DocTitle","@TITLE@");
QELAddTopic(["first-topic","first-topic.htm","Writing a topic"]);
QELAddTopic(["topic-table","topic-table.htm","The topic table"]);
