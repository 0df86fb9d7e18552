	;Program body
DBI FILE 0 LINE 4
	;for
	PUSH(INT)	[local+0]	;lo
	POP(INT)	[local+6]	;i
	LABEL0002:
DBI FILE 0 LINE 4
	PUSH(INT)	[local+6]	;i
	POP(INT)	[local+8]	;j
	PUSH(INT)	[local+6]	;i
	PUSH(INT)	2
	ADD(INT)
	POP(INT)	[local+6]	;i
	PUSH(INT)	[local+6]	;i
	PUSH(INT)	[local+2]	;hi
	CMP LE(INT)
	JC LABEL0002
	LABEL0003:

DBI FILE 0 LINE 5
	;for
	PUSH(INT)	[local+2]	;hi
	POP(INT)	[local+6]	;i
	LABEL0004:

	
	RTS
