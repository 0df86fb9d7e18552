DBI FILE 0 LINE 11
	PUSH(REAL)	[local+8]	;r
	PUSH(INT)	2
	POW(REAL)
	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 12
	PUSH(REAL)	[local+8]	;r
	PUSH(REAL)	0.500000
	POWR(REAL)
	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 13
	PUSH(INT)	[local+12]	;i
	PUSH(INT)	2
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 14
	PUSH(INT)	2
	PUSH(INT)	[local+12]	;i
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 15
	PUSH(REAL)	2.500000
	PUSH(REAL)	[local+8]	;r
	POWR(REAL)
	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 16
	PUSH(REAL)	2.500000
	PUSH(INT)	[local+12]	;i
	POW(REAL)
	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 17
	PUSH(INT)	2
	PUSH(REAL)	[local+8]	;r
	POWR(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 18
	PUSH(INT)	[local+12]	;i
	PUSH(REAL)	[local+8]	;r
	POWR(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 19
	PUSH(REAL)	[local+8]	;r
	PUSH(INT)	[local+12]	;i
	POW(REAL)
	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 20
	PUSH(INT)	[local+12]	;i
	PUSH(SINT)	[local+16]	;s
	TO_INT(SINT)
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 21
	PUSH(INT)	[local+12]	;i
	PUSH(UINT)	[local+14]	;u
	TO_INT(UINT)
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 22
	PUSH(INT)	[local+12]	;i
	PUSH(BOOL)	[local+17].0	;b
	TO_INT(BOOL)
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 23
	PUSH(REAL)	[local+8]	;r
	PUSH(LREAL)	[local+0]	;l
	TO_REAL(LREAL)
	POWR(REAL)
	POP(REAL)	[local+8]	;r
DBI FILE 0 LINE 24
	PUSH(LREAL)	[local+0]	;l
	PUSH(REAL)	[local+8]	;r
	POWR(LREAL)
	POP(LREAL)	[local+0]	;l
DBI FILE 0 LINE 25
	PUSH(UINT)	[local+14]	;u
	PUSH(INT)	2
	POW(UINT)
	POP(UINT)	[local+14]	;u
DBI FILE 0 LINE 26
	PUSH(INT)	[local+12]	;i
	PUSH(INT)	2
	POW(INT)
	NEG(INT)
	POP(INT)	[local+12]	;i
