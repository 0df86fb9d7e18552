DBI FILE 0 LINE 8
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 9
	PUSH(INT)	1
	PUSH(INT)	[local+4]	;i
	ADD(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 10
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	2
	SUB(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 11
	PUSH(INT)	2
	PUSH(INT)	[local+4]	;i
	SUB(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 12
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	3
	MUL(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 13
	PUSH(INT)	3
	PUSH(INT)	[local+4]	;i
	MUL(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 14
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	4
	DIV(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 15
	PUSH(INT)	4
	PUSH(INT)	[local+4]	;i
	DIV(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 16
	PUSH(DINT)	[local+0]	;d
	PUSH(DINT)	100000
	ADD(DINT)
	POP(DINT)	[local+0]	;d
DBI FILE 0 LINE 17
	PUSH(DINT)	7
	PUSH(DINT)	[local+0]	;d
	MUL(DINT)
	POP(DINT)	[local+0]	;d
DBI FILE 0 LINE 18
	PUSH(SINT)	[local+6]	;s
	PUSH(SINT)	300
	SUB(SINT)
	POP(SINT)	[local+6]	;s
DBI FILE 0 LINE 19
	PUSH(SINT)	300
	PUSH(SINT)	[local+6]	;s
	DIV(SINT)
	POP(SINT)	[local+6]	;s
