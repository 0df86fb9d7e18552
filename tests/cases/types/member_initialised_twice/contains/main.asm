	;Global Variable List---------------------------------
		;Variable (0): a (rec,VAR_GLOBAL)
		;Variable (12): b (rec,VAR_GLOBAL)
		;Variable (24): c (rec,VAR_GLOBAL)
	PUSH(INT) 	11
	POP(INT) 	[global+0];a.n
	PUSH(DINT) 	12
	POP(DINT) 	[global+4];a.d
	PUSH(INT) 	13
	POP(INT) 	[global+8];a.e
	PUSH(INT)	3
	POP(INT) 	[global+12];b.n
	PUSH(DINT)	2
	POP(DINT) 	[global+16];b.d

	RTS
