		;Variable (0): f ((REAL),VAR)
		;Variable (4): s ((UDINT),VAR)
		;Variable (8): t ((UDINT),VAR)
		;Variable (12): m ((UDINT),VAR)
		;Variable (16): x ((REAL),VAR)
		;Variable (1002): at1 ((INT),VAR)
		;Variable (-1): c ((REAL),VAR)
		;Variable (0): r ((REAL),VAR)

	;Read input parameters

	;Local variable initialization
	PUSH(INT)	5
	POP(INT) 	[local+6];s.b
	PUSH(INT) 	2
	POP(INT) 	[local+8];t.a
	PUSH(BOOL) 	1
	POP(BOOL) 	[local+12].0;m[0]
	PUSH(BOOL) 	1
	POP(BOOL) 	[local+13].1;m[9]
	PUSH	(REAL)	0.500000
	POP	(REAL) [local+16] ; x
	PUSH	(INT)	7
	POP	(INT) [1002] ; at1

	;Function body
DBI FILE 0 LINE 22
	PUSH(REAL)	[local+16]	;x
	PUSH(REAL)	2.000000
	MUL(REAL)
	POP(REAL)	[local+0]	;f
