	LOCALDATA 16
	;Read input parameter
	DUP(ULINT)
	POP(ULINT)[local+0]	;FB_INSTANCE

	DUP(ULINT)
	POP(ULINT)[local+4]	;a

	DUP(ULINT)
	PUSH(ULINT)	2
	ADD(ULINT)
	POP(ULINT)[local+16]	;b

	DUP(ULINT)
	PUSH(ULINT)	4
	ADD(ULINT)
	POP(ULINT)[local+24]	;s

	POP(ULINT)


	;FunctionBlock body
DBI FILE 0 LINE 12
	PUSH*(INT) [local+8]	;a
	POP*(INT) [local+16]	;b
DBI FILE 0 LINE 13
	PUSH*(INT) [local+16]	;b
	PUSH(ULINT) [local+24]	;&s
	PUSH(ULINT)	2
	ADD(ULINT)
	POPI(INT)
