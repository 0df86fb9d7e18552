	LOCALDATA 1002
		;Variable (0): f ((INT),VAR)
		;Variable (1000): i ((INT),VAR_INPUT)

	;Read input parameters
	POP(INT) [1000] ; i
