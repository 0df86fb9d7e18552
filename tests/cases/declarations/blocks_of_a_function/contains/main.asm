	LOCALDATA 16
		;Variable (0): f ((INT),VAR)
		;Variable (2): v ((INT),VAR)
		;Variable (4): i ((INT),VAR_INPUT)
		;Variable (8): o ((INT),VAR_OUTPUT)
		;Variable (12): io ((BOOL),VAR_IN_OUT)
		;Variable (-1): c ((INT),VAR)
		;Variable (0): r ((INT),VAR)
		;Variable (2): cr ((UDINT),VAR)

	;Read input parameters
	POP(UDINT)	[local+12]	;io
	POP(UDINT)	[local+8]	;o
	POP(INT) [local+4] ; i

	;Local variable initialization
	PUSH	(INT)	3
	POP	(INT) [local+2] ; v

	;Function body
DBI FILE 0 LINE 30
	PUSH(INT)	[local+2]	;v
	PUSH(INT)	[local+4]	;i
	ADD(INT)
	PUSH(INT)	9
	ADD(INT)
	PUSH(INT)	[global+0]	;g
	ADD(INT)
	POP(INT)	[local+0]	;f
