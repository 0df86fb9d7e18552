	LOCALDATA 24
		;Variable (0): work ((INT),VAR)
		;Variable (2): a ((BYTE),VAR_INPUT)
		;Variable (3): b ((BOOL),VAR_INPUT)
		;Variable (4): c ((BOOL),VAR_INPUT)
		;Variable (6): d ((INT),VAR_INPUT)
		;Variable (8): e ((BYTE),VAR_OUTPUT)
		;Variable (9): f ((BOOL),VAR_OUTPUT)
		;Variable (16): g ((LREAL),VAR_IN_OUT)

	;Read input parameters
	POP(ULINT)	[local+16]	;g
	POP(ULINT)	[local+9]	;f
	POP(ULINT)	[local+8]	;e
	POP(INT) [local+6] ; d
	POP(BOOL) [local+4].0 ; c
	POP(BOOL) [local+3].0 ; b
	POP(BYTE) [local+2] ; a

	;Local variable initialization

	;Function body
