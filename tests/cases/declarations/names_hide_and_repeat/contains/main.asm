	LOCALDATA 6
		;Variable (0): f ((INT),VAR)
		;Variable (2): a ((INT),VAR)
		;Variable (4): a ((INT),VAR)

	;Read input parameters

	;Local variable initialization
	PUSH	(INT)	4
	POP	(INT) [local+2] ; a
	PUSH	(INT)	4
	POP	(INT) [local+4] ; a

	;Function body
DBI FILE 0 LINE 9
	PUSH(INT)	[local+4]	;a
	POP(INT)	[local+0]	;f
