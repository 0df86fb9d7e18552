	;Program body
DBI FILE 0 LINE 3
	;for
	PUSH(DINT)	1
	POP(INT)	[local+0]	;i
	LABEL0002:
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	[local+4]	;n
	CMP GT(INT)
	JC LABEL0003
DBI FILE 0 LINE 3
	PUSH(INT)	1
	POP(INT)	[local+2]	;j
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;i
	JMP LABEL0002
	LABEL0003:

DBI FILE 0 LINE 4
	;for
	PUSH(INT)	[local+4]	;n
	POP(INT)	[local+0]	;i
	LABEL0004:
	PUSH(INT)	[local+0]	;i
	PUSH(DINT)	10
	CMP GT(INT)
	JC LABEL0005
DBI FILE 0 LINE 4
	PUSH(INT)	1
	POP(INT)	[local+2]	;j
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	2
	ADD(INT)
	POP(INT)	[local+0]	;i
	JMP LABEL0004
	LABEL0005:

DBI FILE 0 LINE 5
	;for
	PUSH(INT)	[local+4]	;n
	POP(INT)	[local+0]	;i
	LABEL0006:
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	[local+6]	;s
	CMP LT(INT)
	JC LABEL0007
DBI FILE 0 LINE 5
	JMP LABEL0007

	PUSH(INT)	[local+0]	;i
	PUSH(INT)	-2
	ADD(INT)
	POP(INT)	[local+0]	;i
	JMP LABEL0006
	LABEL0007:

DBI FILE 0 LINE 6
	;for
	PUSH(INT)	[local+4]	;n
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;i
	LABEL0008:
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	[local+6]	;s
	CMP GT(INT)
	JC LABEL0009
DBI FILE 0 LINE 6
	PUSH(INT)	1
	POP(INT)	[local+2]	;j
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;i
	JMP LABEL0008
	LABEL0009:


	
	RTS
