	LOCALDATA 28
		;Variable (0): f ((INT),VAR)
		;Variable (2): a ((UDINT),VAR)
		;Variable (8): b ((UDINT),VAR)
		;Variable (10): c ((UDINT),VAR)
		;Variable (14): d ((UDINT),VAR)
		;Variable (18): e ((UDINT),VAR)

	;Read input parameters

	;Local variable initialization
	PUSH(INT) 	1
	POP(INT) 	[local+2];a[0]
	PUSH(INT) 	2
	POP(INT) 	[local+4];a[1]
	PUSH(INT) 	3
	POP(INT) 	[local+6];a[2]
	PUSH(INT) 	4
	POP(INT) 	[local+10];c[0]
	PUSH(INT) 	5
	POP(INT) 	[local+12];c[1]
	PUSH(INT) 	4
	POP(INT) 	[local+14];d[0]
	PUSH(INT) 	5
	POP(INT) 	[local+16];d[1]

	;Function body
DBI FILE 0 LINE 11
	PUSH(INT)	[local+14]	;d[0]
	POP(INT)	[local+12]	;c[1]
DBI FILE 0 LINE 12
	PUSH(INT)	[local+26]	;e[4]
	POP(INT)	[local+0]	;f
