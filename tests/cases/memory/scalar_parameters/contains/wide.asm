	LOCALDATA 32
		;Variable (0): work ((INT),VAR)
		;Variable (2): a ((BYTE),VAR_INPUT)
		;Variable (3): b ((BOOL),VAR_INPUT)
		;Variable (4): c ((BOOL),VAR_INPUT)
		;Variable (6): d ((INT),VAR_INPUT)
		;Variable (8): e ((BYTE),VAR_OUTPUT)
		;Variable (16): f ((BOOL),VAR_OUTPUT)
		;Variable (24): g ((LREAL),VAR_IN_OUT)

	;Read input parameters
	POP(ULINT)	[local+24]	;g
	POP(ULINT)	[local+16]	;f
	POP(ULINT)	[local+8]	;e
	POP(INT) [local+6] ; d
	POP(BOOL) [local+4].0 ; c
	POP(BOOL) [local+3].0 ; b
	POP(BYTE) [local+2] ; a

	;Local variable initialization

	;Function body
