	LOCALDATA 4
		;Variable (0): b ((BOOL),VAR)
		;Variable (0): p ((BOOL),VAR_INPUT)
		;Variable (1): c ((BOOL),VAR)
		;Variable (2): q ((INT),VAR_INPUT)

	;Read input parameters
	POP(INT) [local+2] ; q
	POP(BOOL) [local+0].1 ; p
