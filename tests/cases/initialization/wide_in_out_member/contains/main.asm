		;Variable (0): g (fb,VAR_GLOBAL)
	PUSH(INT) 	3
	POP(INT) 	[global+4];g.narrow
	PUSH(INT) 	4
	POP(INT) 	[global+8];g.behind

	RTS
