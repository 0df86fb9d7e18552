DBI FILE 0 LINE 13
	;or
	;and
	PUSH(WORD)	[local+2]	;w
	PUSH(WORD)	[local+4]	;v
	AND(WORD)

	PUSH(WORD)	255
	OR(WORD)

	POP(WORD)	[local+2]	;w
