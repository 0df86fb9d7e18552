;;	Not used
;;	FUNCTION_f:
;;		DBI POU_END
