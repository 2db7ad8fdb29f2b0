// The main portal: the general help.
mTomeDeckName = "Documentation";

var Entry;
var List;

TDTab_Documents.fVisible( true );

Entry = new TabEntry_Object( "Documents" );
List = new List_Object("doc");
List.fAddItem( "General help", "qel_html_help" );
List.fAddItem( "When a document is missing", "qeldoc_notfound" );
Entry.fAddList( List );
TDTab_Documents.fAddEntry( Entry );
