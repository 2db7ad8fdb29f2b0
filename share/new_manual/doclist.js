// The main portal. Name every document that should appear in it: its title, then its name.
mTomeDeckName = "Documentation";

var Entry;
var List;

TDTab_Documents.fVisible( true );

Entry = new TabEntry_Object( "Documents" );
List = new List_Object("doc");
List.fAddItem( "@TITLE@", "@NAME@" );
List.fAddItem( "General help", "qel_html_help" );
Entry.fAddList( List );
TDTab_Documents.fAddEntry( Entry );
