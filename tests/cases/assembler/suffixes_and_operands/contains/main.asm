	LOCALDATA 29
		;Variable (0): f ((INT),VAR)
		;Variable (2): n ((INT),VAR_INPUT)
		;Variable (4): s ((UDINT),VAR_INPUT)
		;Variable (8): r ((UDINT),VAR_INPUT)
		;Variable (12): o ((UDINT),VAR_OUTPUT)
		;Variable (16): p ((BOOL),VAR_OUTPUT)
		;Variable (20): q ((UDINT),VAR_IN_OUT)
		;Variable (24): l ((INT),VAR)
		;Variable (26): b ((UDINT),VAR)
		;Variable (28): flag ((BOOL),VAR)

	;Read input parameters
	POP(UDINT)	[local+20]	;q
	POP(UDINT)	[local+16]	;p
	POP(UDINT)	[local+12]	;o
	PUSH&(UDINT) [local+8] ; r
	MEMCPY 4
	PUSH&(UDINT) [local+4] ; s
	MEMCPY 4
	POP(INT) [local+2] ; n

	;Local variable initialization
	PUSH	(INT)	3
	POP	(INT) [local+24] ; l
	PUSH	(BOOL)	1
	POP	(BOOL) [local+28].0 ; flag

	;Function body
DBI FILE 0 LINE 39
	PUSH(MyInt)	[local+10]	;r[1]
	PUSH(MyInt)	[local+8]	;r[0]
	ADD(MyInt)
	PUSH(UDINT) [local+20] ; q
	POPI(MyInt)
DBI FILE 0 LINE 40
	PUSH(MyInt)	[local+4]	;s.x
	POP(INT)	[local+2]	;n
DBI FILE 0 LINE 41
	PUSH(MyInt)	3
	PUSH(UDINT) [local+12] ; o
	POPI(MyInt)
DBI FILE 0 LINE 42
	PUSH(INT)	[local+2]	;n
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;f
DBI FILE 0 LINE 43
	PUSH(INT)	-1
	POP(INT)	[global+0]	;g
