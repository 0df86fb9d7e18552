	LOCALDATA 36
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	PUSH(UDINT)	10
	ADD(UDINT)
	POP(UDINT)[local+20]	;o

	DUP(UDINT)
	PUSH(UDINT)	16
	ADD(UDINT)
	POP(UDINT)[local+28]	;g

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 25
	PUSH(INT)	[global+0]	;g
	POP*(INT) [local+20]	;o
