DBI FILE 0 LINE 24
	PUSH(INT)	[local+0]	;x[0]
	POP(INT)	[local+4]	;x[2]
DBI FILE 0 LINE 25
	PUSH(INT)	1
	POP(INT)	[local+6]	;x[3]
DBI FILE 0 LINE 26
	PUSH(INT)	[local+90]	;i
	POP(INT)	[local+4]	;x[2]
DBI FILE 0 LINE 27
	PUSH(INT)	[local+90]	;i
	POP(INT)	[local+8]	;x[4]
DBI FILE 0 LINE 28
	PUSH(DINT)	[local+56]	;y[11]
	POP(DINT)	[local+12]	;y[0]
DBI FILE 0 LINE 29
	PUSH(DINT)	[local+32]	;y[5]
	POP(DINT)	[local+48]	;y[9]
DBI FILE 0 LINE 30
	PUSH(SINT)	[local+60]	;z[0]
	POP(SINT)	[local+82]	;z[22]
DBI FILE 0 LINE 31
	PUSH(MyInt)	[local+84]	;m[0]
	POP(MyInt)	[local+88]	;m[2]
DBI FILE 0 LINE 32
	PUSH&(INT)	[local+2]	;x[1]
	PUSH&(DINT)	[local+36]	;y[6]
	JSR FUNCTION_touch
	POP(INT)	[local+90]	;i
