DBI FILE 0 LINE 8
	PUSH(BOOL)	[local+4].0	;b
	POP(BOOL)	[local+0].0	;a
DBI FILE 0 LINE 9
	PUSH(INT)	[local+2]	;i
	PUSH(INT)	1
	CMP GT(INT)
	POP(BOOL)	[local+5].0	;c
