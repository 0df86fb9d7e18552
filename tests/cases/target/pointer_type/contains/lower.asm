	LOCALDATA 8
		;Variable (0): x ((INT),VAR_IN_OUT)
		;Variable (4): y ((INT),VAR_IN_OUT)

	;Read input parameters
	POP(DWORD)	[local+4]	;y
	POP(DWORD)	[local+0]	;x

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 6
	PUSH*(INT)	[local+4]	;y
	POP*(INT)	[local+0]	;x
