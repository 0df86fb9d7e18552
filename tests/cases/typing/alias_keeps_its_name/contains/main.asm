DBI FILE 0 LINE 15
	PUSH(INT)	[local+0]	;i
	JSR FUNCTION_f
	PUSH(MyInt)	1
	ADD(MyInt)
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 16
	PUSH(MyInt)	1
	PUSH(INT)	[local+0]	;i
	JSR FUNCTION_f
	ADD(MyInt)
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 17
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	[local+0]	;i
	JSR FUNCTION_f
	ADD(INT)
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 18
	PUSH(INT)	[local+0]	;i
	JSR FUNCTION_f
	PUSH(MyInt)	2
	CMP EQ(MyInt)
	POP(BOOL)	[local+4].0	;b
DBI FILE 0 LINE 19
	PUSH(WORD)	[local+2]	;w
	PUSH(INT)	[local+0]	;i
	JSR FUNCTION_f
	TO_INT(MyInt)
	SHL(WORD)
	POP(WORD)	[local+2]	;w
DBI FILE 0 LINE 20
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	[local+0]	;i
	JSR FUNCTION_f
	MAX(INT)
	PUSH(INT)	3
	MAX(INT)

	POP(INT)	[local+0]	;i
