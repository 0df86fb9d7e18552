; FUNCTION: idle,	 file lib.st,	 line 19
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_idle:
