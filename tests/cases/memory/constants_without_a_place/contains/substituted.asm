	LOCALDATA 2
		;Variable (-1): lc ((INT),VAR)
		;Variable (-1): lb ((BOOL),VAR)
		;Variable (0): x ((INT),VAR)

	;Read input parameters

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 27
	PUSH(INT)	9
	POP(INT)	[local+0]	;x
DBI FILE 0 LINE 28
	PUSH(INT)	5
	POP(INT)	[local+0]	;x
