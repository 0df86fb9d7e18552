DBI FILE 0 LINE 11
	;and
	PUSH(BOOL)	[local+0].0	;a
	PUSH(BOOL)	[local+0].2	;c
	AND(BOOL)

	POP(BOOL)	[local+0].1	;b
DBI FILE 0 LINE 12
	;or
	PUSH(BOOL)	[local+0].0	;a
	;and
	PUSH(BOOL)	[local+0].2	;c
	JSR FUNCTION_f
	AND(BOOL)

	OR(BOOL)

	POP(BOOL)	[local+0].1	;b
DBI FILE 0 LINE 13
	;or
	;and
	PUSH(WORD)	[local+2]	;w
	PUSH(WORD)	[local+4]	;v
	AND(WORD)

	PUSH(WORD)	255
	OR(WORD)

	POP(WORD)	[local+2]	;w
DBI FILE 0 LINE 14
	PUSH(WORD)	[local+2]	;w
	PUSH(WORD)	[local+4]	;v
	XOR(WORD)
	POP(WORD)	[local+2]	;w
DBI FILE 0 LINE 15
	PUSH(BOOL)	0
	POP(BOOL)	[local+0].1	;b
