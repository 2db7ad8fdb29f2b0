// ----- auto-generated list of available tomedecks -----
mbUseInstalledTdks = true;

// List.fAddItem( "A comment stays", "gone_td" );
mReleaseName = "Release 1";
List = new List_Object("tomedeck");
List.fAddItem( "Named", "named_td" );
List.fAddItem( "Linked", "../index.html?tomedeck=named_td" );
List.fAddItem( "One argument" );
List.fAddItem( "Found on the disk", "extra_td" );
Entry.fAddList( List );
Entry.fAddList( Other );
var mReleaseName = "Release 2";
last line, without an end
