DBI FILE 0 LINE 4
	;runtime array address
	PUSH&(INT)[local+4]	;&a[0]
	PUSH(INT)	[local+2]	;n
	ADDRESS(INT) 2 0 3
	PUSHI(INT)
	POP(INT)	[local+0]	;pick
DBI FILE 0 LINE 5
	;runtime array address
	PUSH&(INT)[local+4]	;&a[0]
	PUSH(INT)	[local+2]	;n
	PUSH(INT)	1
	ADD(INT)
	ADDRESS(INT) 2 0 3
	PUSHI(INT)
	POP(INT)	[local+0]	;pick
