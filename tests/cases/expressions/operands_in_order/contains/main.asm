DBI FILE 0 LINE 10
	PUSH(DINT)	[local+0]	;a
	PUSH(DINT)	[local+4]	;b
	ADD(DINT)
	PUSH(DINT)	[local+0]	;a
	PUSH(DINT)	[local+8]	;c
	SUB(DINT)
	MUL(DINT)
	PUSH(DINT)	[local+4]	;b
	DIV(DINT)
	PUSH(DINT)	2
	MOD(DINT)
	POP(DINT)	[local+0]	;a
DBI FILE 0 LINE 11
	PUSH(DINT)	[local+0]	;a
	PUSH(INT)	[local+20]	;i
	POW(DINT)
	NEG(DINT)
	PUSH(DINT)	[local+4]	;b
	ABS(DINT)
	ADD(DINT)
	POP(DINT)	[local+0]	;a
DBI FILE 0 LINE 12
	PUSH(REAL)	1.500000
	PUSH(INT)	[local+20]	;i
	POW(REAL)
	POP(REAL)	[local+12]	;r
DBI FILE 0 LINE 13
	PUSH(DINT)	[local+0]	;a
	PUSH(DINT)	1
	ADD(DINT)
	PUSH(DINT)	[local+4]	;b
	CMP GT(DINT)
	PUSH(DINT)	[local+8]	;c
	PUSH(DINT)	5
	CMP LE(DINT)
	NOT(BOOL)
	CMP EQ(BOOL)
	POP(BOOL)	[local+18].0	;t
DBI FILE 0 LINE 14
	;and
	PUSH(WORD)	[local+16]	;w
	PUSH(WORD)	240
	AND(WORD)

	PUSH(INT)	[local+20]	;i
	PUSH(INT)	1
	ADD(INT)
	SHL(WORD)
	PUSH(WORD)	[local+16]	;w
	PUSH(INT)	4
	ROR(WORD)
	XOR(WORD)
	POP(WORD)	[local+16]	;w
DBI FILE 0 LINE 15
	PUSH(DINT)	[local+0]	;a
	PUSH(DINT)	1
	ADD(DINT)
	PUSH(DINT)	[local+4]	;b
	PUSH(DINT)	[local+8]	;c
	NEG(DINT)
	MULDIV(DINT)
	POP(DINT)	[local+0]	;a
DBI FILE 0 LINE 16
	PUSH(DINT)	[local+4]	;b
	PUSH(DINT)	1
	SUB(DINT)
	PUSH(DINT)	[local+0]	;a
	PUSH(DINT)	[local+4]	;b
	MIN(DINT)
	PUSH(DINT)	[local+8]	;c
	MIN(DINT)

	MAX(DINT)
	PUSH(DINT)	1
	PUSH(DINT)	[local+8]	;c
	MAX(DINT)

	MIN(DINT)
	POP(DINT)	[local+0]	;a
DBI FILE 0 LINE 17
	PUSH(DINT)	2
	PUSH(DINT)	[local+0]	;a
	CMP NE(DINT)
	PUSH(BOOL)	[local+18].0	;t
	XOR(BOOL)
	POP(BOOL)	[local+18].0	;t
DBI FILE 0 LINE 18
	PUSH(DINT)	[local+0]	;a
	PUSH(DINT)	[local+4]	;b
	MOD(DINT)
	POP(DINT)	[local+0]	;a
DBI FILE 0 LINE 19
	PUSH(INT)	1
	PUSH(REAL)	1.500000
	CMP EQ(INT)
	NOT(BOOL)
	NOT(BOOL)
	POP(BOOL)	[local+18].0	;t
