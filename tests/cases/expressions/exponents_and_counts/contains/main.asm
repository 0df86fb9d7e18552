DBI FILE 0 LINE 20
	PUSH(INT)	[local+12]	;i
	PUSH(INT)	[local+12]	;i
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 21
	PUSH(INT)	[local+12]	;i
	PUSH(SINT)	[local+14]	;s
	TO_INT(SINT)
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 22
	PUSH(INT)	[local+12]	;i
	PUSH(MyInt)	[local+20]	;x.n
	TO_INT(MyInt)
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 23
	PUSH(DINT)	[local+28]	;d
	PUSH(REAL)	[local+8]	;r
	POWR(DINT)
	POP(DINT)	[local+28]	;d
DBI FILE 0 LINE 24
	PUSH(DINT)	[local+28]	;d
	PUSH(LREAL)	[local+0]	;l
	TO_REAL(LREAL)
	POWR(DINT)
	POP(DINT)	[local+28]	;d
DBI FILE 0 LINE 25
	PUSH(DINT)	[local+28]	;d
	PUSH(MyReal)	[local+24]	;x.r
	TO_REAL(MyReal)
	POWR(DINT)
	POP(DINT)	[local+28]	;d
DBI FILE 0 LINE 26
	PUSH(MyReal)	[local+24]	;x.r
	PUSH(INT)	2
	POW(MyReal)
	POP(MyReal)	[local+24]	;x.r
DBI FILE 0 LINE 27
	PUSH(MyReal)	[local+24]	;x.r
	PUSH(REAL)	0.500000
	POWR(MyReal)
	POP(MyReal)	[local+24]	;x.r
DBI FILE 0 LINE 28
	PUSH(MyInt)	[local+20]	;x.n
	PUSH(INT)	3
	POW(MyInt)
	POP(MyInt)	[local+20]	;x.n
DBI FILE 0 LINE 29
	PUSH(LREAL)	[local+0]	;l
	PUSH(INT)	[local+12]	;i
	PUSH(INT)	1
	ADD(INT)
	POW(LREAL)
	POP(LREAL)	[local+0]	;l
DBI FILE 0 LINE 30
	PUSH(INT)	[local+12]	;i
	PUSH(INT)	[local+12]	;i
	POW(INT)
	PUSH(SINT)	[local+14]	;s
	TO_INT(SINT)
	POW(INT)
	POP(INT)	[local+12]	;i
DBI FILE 0 LINE 31
	PUSH(WORD)	[local+16]	;w
	PUSH(INT)	[local+12]	;i
	SHL(WORD)
	POP(WORD)	[local+16]	;w
DBI FILE 0 LINE 32
	PUSH(WORD)	[local+16]	;w
	PUSH(MyInt)	[local+20]	;x.n
	TO_INT(MyInt)
	SHR(WORD)
	POP(WORD)	[local+16]	;w
DBI FILE 0 LINE 33
	PUSH(WORD)	[local+16]	;w
	PUSH(SINT)	[local+14]	;s
	TO_INT(SINT)
	ROL(WORD)
	POP(WORD)	[local+16]	;w
DBI FILE 0 LINE 34
	PUSH(WORD)	[local+16]	;w
	PUSH(DINT)	[local+28]	;d
	TO_INT(DINT)
	ROR(WORD)
	POP(WORD)	[local+16]	;w
DBI FILE 0 LINE 35
	PUSH(WORD)	[local+16]	;w
	PUSH(MyReal)	[local+24]	;x.r
	TO_INT(MyReal)
	SHL(WORD)
	POP(WORD)	[local+16]	;w
