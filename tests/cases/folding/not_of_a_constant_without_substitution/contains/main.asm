DBI FILE 0 LINE 8
	PUSH(BOOL)	[global+0].0	;c
	NOT(BOOL)
	POP(BOOL)	[local+0].0	;b
