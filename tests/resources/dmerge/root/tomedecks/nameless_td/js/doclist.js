mTomeDeckName = "";
