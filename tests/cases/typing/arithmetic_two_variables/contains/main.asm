DBI FILE 0 LINE 9
	PUSH(LREAL)	[local+0]	;l
	PUSH(LREAL)	[local+8]	;m
	ADD(LREAL)
	POP(LREAL)	[local+0]	;l
DBI FILE 0 LINE 10
	PUSH(REAL)	[local+16]	;r
	PUSH(REAL)	[local+20]	;q
	SUB(REAL)
	POP(REAL)	[local+16]	;r
DBI FILE 0 LINE 11
	PUSH(UINT)	[local+24]	;u
	PUSH(UINT)	[local+26]	;v
	MUL(UINT)
	POP(UINT)	[local+24]	;u
DBI FILE 0 LINE 12
	PUSH(SINT)	[local+28]	;s
	PUSH(SINT)	[local+29]	;t
	DIV(SINT)
	POP(SINT)	[local+28]	;s
