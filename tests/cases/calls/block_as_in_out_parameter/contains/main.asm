	;Function body
DBI FILE 0 LINE 9
	PUSH(INT)	2
	PUSH(UDINT) [local+4] ; c
	PUSH(UDINT)	8
	ADD(UDINT)
	POPI(INT)
	PUSH(INT)	[local+8]	;x
	PUSH(UDINT) [local+4] ; c
	POPI(INT)
	PUSH(UDINT)	[local+4]	;c
	JSR FUNCTION_cnt
	PUSH(UDINT) [local+4] ; c
	PUSH(UDINT)	16
	ADD(UDINT)
	PUSHI(INT)
	PUSH(INT)	[local+8]	;x

DBI FILE 0 LINE 10
	PUSH(BOOL)	1
	PUSH(UDINT) [local+4] ; c
	PUSH(UDINT)	12
	ADD(UDINT)
	POPI(BOOL)
	PUSH(INT)	[local+8]	;x
	PUSH(INT)	1
	ADD(INT)
	PUSH(UDINT) [local+4] ; c
	POPI(INT)
	PUSH(UDINT)	[local+4]	;c
	JSR FUNCTION_cnt

DBI FILE 0 LINE 11
	PUSH(UDINT)	[local+4]	;c
	JSR FUNCTION_cnt

DBI FILE 0 LINE 12
	PUSH(INT)	[local+8]	;x
	PUSH(UDINT) [local+4] ; c
	POPI(INT)
	PUSH(INT)	5
	PUSH(UDINT) [local+4] ; c
	PUSH(UDINT)	8
	ADD(UDINT)
	POPI(INT)
	PUSH(UDINT)	[local+4]	;c
	JSR FUNCTION_cnt
	PUSH(UDINT) [local+4] ; c
	PUSH(UDINT)	16
	ADD(UDINT)
	PUSHI(INT)
	PUSH(INT)	5


	;Return value
