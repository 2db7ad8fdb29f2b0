mTomeDeckName = "No portal";
