;;	Not used
