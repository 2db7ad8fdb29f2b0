keep
