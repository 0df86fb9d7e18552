DBI FILE 0 LINE 26
	PUSH(INT)	[global+16]	;v3.e[1]
	POP(INT)	[global+0]	;v1
DBI FILE 0 LINE 27
	PUSH&(UDINT)	[global+20]	;v5
	PUSH&(UDINT)	[global+4]	;v3
	MEMCPY	14
