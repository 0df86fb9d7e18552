	LOCALDATA 32
		;Variable (0): work ((INT),VAR)
		;Variable (4): a ((BYTE),VAR_INPUT)
		;Variable (8): b ((BOOL),VAR_INPUT)
		;Variable (12): c ((BOOL),VAR_INPUT)
		;Variable (16): d ((INT),VAR_INPUT)
		;Variable (20): e ((BYTE),VAR_OUTPUT)
		;Variable (24): f ((BOOL),VAR_OUTPUT)
		;Variable (28): g ((LREAL),VAR_IN_OUT)

	;Read input parameters
	POP(UDINT)	[local+28]	;g
	POP(UDINT)	[local+24]	;f
	POP(UDINT)	[local+20]	;e
	POP(INT) [local+16] ; d
	POP(BOOL) [local+12].0 ; c
	POP(BOOL) [local+8].0 ; b
	POP(BYTE) [local+4] ; a

	;Local variable initialization

	;Function body
