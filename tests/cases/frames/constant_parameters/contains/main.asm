	LOCALDATA 4
		;Variable (0): twice ((INT),VAR)
		;Variable (2): a ((INT),VAR_INPUT)
		;Variable (-1): two ((INT),VAR)

	;Read input parameters
	POP(INT) [local+2] ; a

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 4
	PUSH(INT)	[local+2]	;a
	PUSH(INT)	2
	MUL(INT)
	POP(INT)	[local+0]	;twice
