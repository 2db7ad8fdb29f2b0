mTomeDeckName = "Named";
List.fAddItem( "Title of the portal", "titled" );
// List.fAddItem( "Commented out", "element" );
