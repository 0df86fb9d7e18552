		;Variable (40): p1 (Pair,VAR_GLOBAL)
		;Variable (44): x (INT,VAR_GLOBAL)
		;Variable (46): last (INT,VAR_GLOBAL)
	PUSH(INT) 	5
	POP(INT) 	[global+0];r0[0]
	PUSH(INT) 	6
	POP(INT) 	[global+2];r0[1]
	PUSH(INT) 	1
	POP(INT) 	[global+4];r1[0]
	PUSH(INT) 	2
	POP(INT) 	[global+6];r1[1]
	PUSH(INT) 	5
	POP(INT) 	[global+8];m[0][0]
	PUSH(INT) 	6
	POP(INT) 	[global+10];m[0][1]
	PUSH(INT) 	9
	POP(INT) 	[global+12];m[1][0]
	PUSH(INT) 	1
	POP(INT) 	[global+16];m[2][0]
	PUSH(INT) 	2
	POP(INT) 	[global+18];m[2][1]
	PUSH(INT)	7
	POP(INT) 	[global+22];p0.b
	PUSH(INT)	4
	POP(INT) 	[global+26];o.part.b
	PUSH(INT)	7
	POP(INT) 	[global+30];q[0].b
	PUSH(INT)	1
	POP(INT) 	[global+32];q[1].a
	PUSH(INT)	4
	POP(INT) 	[global+38];q[2].b
	PUSH	(INT)	1
	POP	(INT) [global+46] ; last

	RTS
