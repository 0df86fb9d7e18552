	;Program body
DBI FILE 0 LINE 4
	;for
	PUSH(DINT)	1
	;runtime array address
	PUSH&(INT)[local+2]	;&a[0]
	PUSH(INT)	[local+0]	;i
	ADDRESS(INT) 2 0 3
	POPI(INT)
	LABEL0002:
DBI FILE 0 LINE 4

	;runtime array address
	PUSH&(INT)[local+2]	;&a[0]
	PUSH(INT)	[local+0]	;i
	ADDRESS(INT) 2 0 3
	PUSHI(INT)
	PUSH(INT)	1
	ADD(INT)
	;runtime array address
	PUSH&(INT)[local+2]	;&a[0]
	PUSH(INT)	[local+0]	;i
	ADDRESS(INT) 2 0 3
	POPI(INT)
	;runtime array address
	PUSH&(INT)[local+2]	;&a[0]
	PUSH(INT)	[local+0]	;i
	ADDRESS(INT) 2 0 3
	PUSHI(INT)
	PUSH(DINT)	2
	CMP LE(INT)
	JC LABEL0002
	LABEL0003:

DBI FILE 0 LINE 5
	;for
	PUSH(INT)	[local+4]	;a[1]
	POP(INT)	[local+12]	;s.y
	LABEL0004:
	PUSH(INT)	[local+12]	;s.y
	PUSH(DINT)	2
	CMP GT(INT)
	JC LABEL0005
DBI FILE 0 LINE 5

	PUSH(INT)	[local+12]	;s.y
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+12]	;s.y
	JMP LABEL0004
	LABEL0005:

DBI FILE 0 LINE 6
	;for
	PUSH(DINT)	1
	POP(UINT)	[local+14]	;u
	LABEL0006:
DBI FILE 0 LINE 6

	PUSH(UINT)	[local+14]	;u
	PUSH(UINT)	1
	ADD(UINT)
	POP(UINT)	[local+14]	;u
	PUSH(UINT)	[local+14]	;u
	PUSH(DINT)	3
	CMP LE(UINT)
	JC LABEL0006
	LABEL0007:

DBI FILE 0 LINE 7
	;for
	PUSH(DINT)	1
	POP(INT)	[local+0]	;i
	LABEL0008:
	PUSH(DINT)	[local+16]	;d
	PUSH(DINT)	0
	CMP GT(DINT)
	JC LABEL0010
	PUSH(DINT)	[local+16]	;d
	PUSH(DINT)	0
	CMP LT(DINT)
	JC LABEL0011
	JMP LABEL0009
	LABEL0011:
	PUSH(INT)	[local+0]	;i
	PUSH(DINT)	4
	CMP LT(INT)
	JC LABEL0009
	JMP LABEL0012
	LABEL0010:
	PUSH(INT)	[local+0]	;i
	PUSH(DINT)	4
	CMP GT(INT)
	JC LABEL0009
	LABEL0012:
DBI FILE 0 LINE 7

	PUSH(INT)	[local+0]	;i
	PUSH(DINT)	[local+16]	;d
	ADD(INT)
	POP(INT)	[local+0]	;i
	JMP LABEL0008
	LABEL0009:


	
	RTS
