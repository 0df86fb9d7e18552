DBI FILE 0 LINE 10
	PUSH(INT)	[local+0]	;i
	TO_INT (INT)

	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 11
	PUSH(REAL)	[local+8]	;r
	TO_REAL (REAL)

	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 12
	PUSH(BOOL)	[local+3].0	;b
	TO_BYTE (BOOL)

	POP(BYTE)	[local+4]	;y
DBI FILE 0 LINE 13
	PUSH(BYTE)	[local+4]	;y
	TO_BOOL (BYTE)

	POP(BOOL)	[local+3].0	;b
DBI FILE 0 LINE 14
	PUSH(INT)	[local+0]	;i
	TO_LREAL (INT)

	POP(LREAL)	[local+16]	;l
DBI FILE 0 LINE 15
	PUSH(LREAL)	[local+16]	;l
	TO_USINT (LREAL)

	POP(USINT)	[local+2]	;u
