	LOCALDATA 4
		;Variable (0): x ((INT),VAR_IN_OUT)
		;Variable (2): y ((INT),VAR_IN_OUT)

	;Read input parameters
	POP(INT)	[local+2]	;y
	POP(INT)	[local+0]	;x

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 6
	PUSH*(INT)	[local+2]	;y
	POP*(INT)	[local+0]	;x
