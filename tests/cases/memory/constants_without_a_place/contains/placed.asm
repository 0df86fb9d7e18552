	LOCALDATA 6
		;Variable (0): lc ((INT),VAR)
		;Variable (2): lb ((BOOL),VAR)
		;Variable (4): x ((INT),VAR)

	;Read input parameters

	;Local variable initialization
	PUSH	(INT)	9
	POP	(INT) [local+0] ; lc
	PUSH	(BOOL)	1
	POP	(BOOL) [local+2].0 ; lb

	;Function body
DBI FILE 0 LINE 27
	PUSH(INT)	[local+0]	;lc
	POP(INT)	[local+4]	;x
DBI FILE 0 LINE 28
	PUSH(INT)	[global+0]	;gc
	POP(INT)	[local+4]	;x
