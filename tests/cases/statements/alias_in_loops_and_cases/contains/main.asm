DBI FILE 0 LINE 6
	;for
	PUSH(DINT)	3
	POP(Num)	[local+0]	;s.m
	LABEL0002:
DBI FILE 0 LINE 6
	PUSH(Num)	[local+0]	;s.m
	POP(INT)	[local+8]	;x
	PUSH(Num)	[local+0]	;s.m
	PUSH(Num)	-2
	ADD(Num)
	POP(Num)	[local+0]	;s.m
	PUSH(Num)	[local+0]	;s.m
	PUSH(DINT)	1
	CMP GE(Num)
	JC LABEL0002
	LABEL0003:

DBI FILE 0 LINE 7
	;for
	PUSH(Num)	[local+0]	;s.m
	POP(INT)	[local+8]	;x
	LABEL0004:
	PUSH(Num)	[local+6]	;s.z[1]
	PUSH(Num)	0
	CMP GT(Num)
	JC LABEL0006
	PUSH(Num)	[local+6]	;s.z[1]
	PUSH(Num)	0
	CMP LT(Num)
	JC LABEL0007
	JMP LABEL0005
	LABEL0007:
	PUSH(INT)	[local+8]	;x
	PUSH(Num)	[local+0]	;s.m
	CMP LT(INT)
	JC LABEL0005
	JMP LABEL0008
	LABEL0006:
	PUSH(INT)	[local+8]	;x
	PUSH(Num)	[local+0]	;s.m
	CMP GT(INT)
	JC LABEL0005
	LABEL0008:
DBI FILE 0 LINE 7

	PUSH(INT)	[local+8]	;x
	PUSH(Num)	[local+6]	;s.z[1]
	ADD(INT)
	POP(INT)	[local+8]	;x
	JMP LABEL0004
	LABEL0005:

DBI FILE 0 LINE 8
	;case
	PUSH(Num)	[local+0]	;s.m
	CASE (Num) 4 LABEL0010
	CASE (Num) -1 LABEL0012
	CASER (Num) 2  3 LABEL0012
	POP(Num)
	JMP LABEL0009
	LABEL0010:
DBI FILE 0 LINE 8
	;if
	PUSH(Flag)	[local+2].0	;s.q
	JNC LABEL0011
	;then
DBI FILE 0 LINE 8
	PUSH(INT)	1
	POP(INT)	[local+8]	;x
	LABEL0011:

	JMP LABEL0009
	LABEL0012:
DBI FILE 0 LINE 8
	JMP LABEL0009

	LABEL0009:

DBI FILE 0 LINE 9
	;repeat
	LABEL0013:
DBI FILE 0 LINE 9

	;or
	PUSH(Flag)	[local+2].0	;s.q
	DUP(BOOL)
	JC LABEL0015
	POP(BOOL)
	PUSH(INT)	[local+8]	;x
	PUSH(Num)	[local+0]	;s.m
	CMP GT(INT)
	LABEL0015:

	JNC LABEL0013
	LABEL0014:


