DBI FILE 0 LINE 10
	PUSH(INT)	[local+12]	;i
	NEG(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 11
	PUSH(UINT)	[local+14]	;u
	NEG(UINT)
	POP(UINT)	[local+14]	;u
DBI FILE 0 LINE 12
	PUSH(REAL)	[local+8]	;r
	ABS(REAL)
	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 13
	PUSH(UINT)	[local+14]	;u
	ABS(UINT)
	POP(UINT)	[local+14]	;u
DBI FILE 0 LINE 14
	PUSH(INT)	[local+12]	;i
	SQRT(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 15
	PUSH(LREAL)	[local+0]	;l
	SQRT(LREAL)
	POP(LREAL)	[local+0]	;l
DBI FILE 0 LINE 16
	PUSH(BOOL)	[local+18].0	;b
	NOT(BOOL)
	POP(BOOL)	[local+18].0	;b
DBI FILE 0 LINE 17
	PUSH(WORD)	[local+16]	;w
	NOT(WORD)
	POP(WORD)	[local+16]	;w
DBI FILE 0 LINE 18
	PUSH(INT)	[local+12]	;i
	NOT(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 19
	PUSH(UINT)	[local+14]	;u
	NOT(UINT)
	POP(UINT)	[local+14]	;u
DBI FILE 0 LINE 20
	PUSH(INT)	[local+12]	;i
	NOT(INT)
	PUSH(INT)	5
	CMP EQ(INT)
	POP(BOOL)	[local+18].0	;b
DBI FILE 0 LINE 21
	PUSH(INT)	[local+12]	;i
	POP(INT)	[local+12]	;i
