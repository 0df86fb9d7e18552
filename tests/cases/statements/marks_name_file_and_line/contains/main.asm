	;Function body
DBI FILE 0 LINE 2
	PUSH(INT)	1
	POP(INT)	[local+0]	;f
