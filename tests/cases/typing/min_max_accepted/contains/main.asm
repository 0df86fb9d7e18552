DBI FILE 0 LINE 10
	PUSH(INT)	[local+8]	;i
	PUSH(INT)	2
	MAX(INT)

	POP(INT)	[local+8]	;i
DBI FILE 0 LINE 11
	PUSH(INT)	1
	PUSH(INT)	[local+8]	;i
	MIN(INT)
	PUSH(INT)	[local+10]	;j
	MIN(INT)

	POP(INT)	[local+8]	;i
DBI FILE 0 LINE 12
	PUSH(REAL)	[local+0]	;r
	PUSH(REAL)	1.500000
	MAX(REAL)

	POP(REAL)	[local+0]	;r
DBI FILE 0 LINE 13
	PUSH(REAL)	2
	PUSH(REAL)	[local+0]	;r
	MIN(REAL)
	PUSH(REAL)	[local+4]	;q
	MIN(REAL)

	POP(REAL)	[local+0]	;r
DBI FILE 0 LINE 14
	PUSH(UINT)	[local+12]	;u
	PUSH(UINT)	-1
	MIN(UINT)

	POP(UINT)	[local+12]	;u
DBI FILE 0 LINE 15
	PUSH(WORD)	[local+14]	;w
	PUSH(WORD)	1
	MAX(WORD)

	POP(WORD)	[local+14]	;w
DBI FILE 0 LINE 16
	PUSH(INT)	[local+8]	;i
	PUSH(INT)	1.500000
	MAX(INT)

	POP(INT)	[local+8]	;i
DBI FILE 0 LINE 17
	PUSH(BOOL)	[local+16].0	;b
	PUSH(BOOL)	[local+16].1	;c
	MIN(BOOL)

	POP(BOOL)	[local+16].0	;b
