	LOCALDATA 2
		;Variable (0): f ((INT),VAR)

	;Read input parameters

	;Local variable initialization
	PUSH	(INT)	5
	POP	(INT) [local+0] ; f

	;Function body
DBI FILE 0 LINE 6
	PUSH(INT)	[local+0]	;f
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;f

	;Return value
	PUSH	(INT) [local+0] ; f
	RTS
