	POP(INT)	[600]	;b
	POP(BOOL)	[601].7	;d
	PUSH(BYTE)	[601]	;c
