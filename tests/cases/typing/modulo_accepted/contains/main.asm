DBI FILE 0 LINE 13
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	3
	MOD(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 14
	PUSH(INT)	3
	PUSH(INT)	[local+4]	;i
	MOD(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 15
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	[local+6]	;j
	MOD(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 16
	PUSH(UINT)	[local+8]	;u
	PUSH(UINT)	3
	MOD(UINT)
	POP(UINT)	[local+8]	;u
DBI FILE 0 LINE 17
	PUSH(UINT)	3
	PUSH(UINT)	[local+8]	;u
	MOD(UINT)
	POP(UINT)	[local+8]	;u
DBI FILE 0 LINE 18
	PUSH(UINT)	[local+8]	;u
	PUSH(UINT)	-1
	MOD(UINT)
	POP(UINT)	[local+8]	;u
DBI FILE 0 LINE 19
	PUSH(UINT)	[local+8]	;u
	PUSH(UINT)	7
	MOD(UINT)
	POP(UINT)	[local+8]	;u
DBI FILE 0 LINE 20
	PUSH(REAL)	[local+0]	;r
	PUSH(REAL)	3
	MOD(REAL)
	POP(REAL)	[local+0]	;r
DBI FILE 0 LINE 21
	PUSH(REAL)	[local+0]	;r
	PUSH(REAL)	1.500000
	MOD(REAL)
	POP(REAL)	[local+0]	;r
DBI FILE 0 LINE 22
	PUSH(REAL)	3
	PUSH(REAL)	[local+0]	;r
	MOD(REAL)
	POP(REAL)	[local+0]	;r
DBI FILE 0 LINE 23
	PUSH(REAL)	1.500000
	PUSH(REAL)	[local+0]	;r
	MOD(REAL)
	POP(REAL)	[local+0]	;r
DBI FILE 0 LINE 24
	PUSH(WORD)	[local+10]	;w
	PUSH(WORD)	3
	MOD(WORD)
	POP(WORD)	[local+10]	;w
DBI FILE 0 LINE 25
	PUSH(BOOL)	[local+12].0	;b
	PUSH(BOOL)	1
	MOD(BOOL)
	POP(BOOL)	[local+12].0	;b
DBI FILE 0 LINE 26
	PUSH(BOOL)	[local+12].0	;b
	PUSH(BOOL)	1
	MOD(BOOL)
	POP(BOOL)	[local+12].0	;b
DBI FILE 0 LINE 27
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	[local+6]	;j
	MOD(INT)
	POP(INT)	[local+4]	;i
