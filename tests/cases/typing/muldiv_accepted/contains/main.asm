DBI FILE 0 LINE 7
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	[local+6]	;j
	PUSH(INT)	[local+8]	;k
	MULDIV(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 8
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	2
	PUSH(INT)	3
	MULDIV(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 9
	PUSH(INT)	2
	PUSH(INT)	[local+4]	;i
	PUSH(INT)	3
	MULDIV(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 10
	PUSH(INT)	2
	PUSH(INT)	3
	PUSH(INT)	[local+4]	;i
	MULDIV(INT)
	POP(INT)	[local+4]	;i
DBI FILE 0 LINE 11
	PUSH(UINT)	[local+10]	;u
	PUSH(UINT)	[local+12]	;v
	PUSH(UINT)	[local+10]	;u
	MULDIV(UINT)
	POP(UINT)	[local+10]	;u
DBI FILE 0 LINE 12
	PUSH(UINT)	[local+10]	;u
	PUSH(UINT)	-1
	PUSH(UINT)	3
	MULDIV(UINT)
	POP(UINT)	[local+10]	;u
DBI FILE 0 LINE 13
	PUSH(DINT)	100
	PUSH(DINT)	[local+0]	;d
	PUSH(DINT)	[local+0]	;d
	MULDIV(DINT)
	POP(DINT)	[local+0]	;d
