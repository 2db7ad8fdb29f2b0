// The documents of this project, in reading order.
mTomeDeckName = "The libolh project";

var Entry;
var List;

TDTab_Documents.fVisible( true );

Entry = new TabEntry_Object( "Documents" );
List = new List_Object("doc");
List.fAddItem( "The libolh manual", "olh_manual" );
List.fAddItem( "General help", "qel_html_help" );
Entry.fAddList( List );
TDTab_Documents.fAddEntry( Entry );
