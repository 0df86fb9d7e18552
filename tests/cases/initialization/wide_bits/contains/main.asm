		;Variable (0): bits (BOOL[],VAR_GLOBAL)
		;Variable (6): v (INT,VAR_GLOBAL)
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+1].0;bits[8]
	PUSH	(INT)	1
	POP	(INT) [global+6] ; v

	RTS
