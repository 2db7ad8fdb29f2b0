mTomeDeckName = "Main";
