DBI FILE 0 LINE 7
	PUSH(BOOL)	[local+4].3	;b[11]
	POP(BOOL)	[local+0].7	;b[7]
DBI FILE 0 LINE 8
	PUSH(BOOL)	[local+4].0	;b[8]
	POP(BOOL)	[local+8].3	;b[19]
DBI FILE 0 LINE 9
	;runtime array address
	PUSH&(BOOL)[local+0].0	;&b[0]
	PUSH(INT)	[local+10]	;i
	ADDRESSBIT(INT) 1 0 19
	PUSHI(BOOL)
	POP(BOOL)	[local+0].0	;b[0]
