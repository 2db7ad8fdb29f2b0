// The portals that this documentation may hold. "olh dmerge" writes tdklist_installed.js from this list: portals that
// are not installed drop out, installed ones that are not named here are added.
mReleaseName = "libolh 4.3.2";

var Entry;
var List;

TDTab_TomeDecks.fVisible( true );

Entry = new TabEntry_Object( "TomeDecks" );
List = new List_Object("tomedeck");
List.fAddItem( "The libolh project", "olh_td" );
Entry.fAddList( List );
TDTab_TomeDecks.fAddEntry( Entry );
