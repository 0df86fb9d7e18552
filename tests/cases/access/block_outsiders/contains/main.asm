	LOCALDATA 12
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;h

	DUP(UDINT)
	PUSH(UDINT)	2
	ADD(UDINT)
	POP(UDINT)[local+8]	;i

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 18
	PUSH(INT)	[global+2]	;h
	POP(INT)	[global+0]	;g
DBI FILE 0 LINE 19
	PUSH(INT)	[retain+0]	;r
	POP*(INT) [local+8]	;i
DBI FILE 0 LINE 20
	PUSH*(INT) [local+8]	;i
	PUSH(INT)	[retain+0]	;r
	CMP GT(INT)
	POP(BOOL)	[3003].2	;m
DBI FILE 0 LINE 21
	PUSH(INT)	[global+8]	;a[2]
	;runtime array address
	PUSH&(INT)[global+4]	;&a[0]
	PUSH*(INT) [local+8]	;i
	ADDRESS(INT) 2 0 3
	POPI(INT)
