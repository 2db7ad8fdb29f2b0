var a = 1;
mTomeDeckName = "Found on the disk";
List.fAddItem( "A link", "pdfdocs/attribute" );
List.fAddItem( "No such PDF", "nothing" ); // later
