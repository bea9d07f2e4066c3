// Present so that the folder is a library from the first day.
