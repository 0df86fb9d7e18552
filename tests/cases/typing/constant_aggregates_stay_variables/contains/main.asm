DBI FILE 0 LINE 12
	PUSH(INT)	[global+2]	;a[1]
	PUSH(INT)	3
	ADD(INT)
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 13
	PUSH(INT)	[global+8]	;s.y
	PUSH(INT)	3
	MUL(INT)
	POP(INT)	[local+0]	;i
