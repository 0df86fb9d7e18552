DBI FILE 0 LINE 13
	PUSH(INT)	[local+2]	;v
	PUSH*(INT)	[local+8]	;p
	CMP GT(INT)
	POP*(BOOL)	[local+4].0	;o
DBI FILE 0 LINE 14
	PUSH(INT)	[local+2]	;v
	POP*(INT)	[local+8]	;p
DBI FILE 0 LINE 15
	PUSH*(BOOL)	[local+4].0	;o
	POP(BOOL)	[local+0].0	;inner
