		;Variable (58): xc (INT,VAR_GLOBAL)
		;Variable (60): z (WORD,VAR_GLOBAL)
		;Variable (62): xd (WORD,VAR_GLOBAL)
		;Variable (64): xe (INT,VAR_GLOBAL)
	PUSH	(INT)	5
	POP	(INT) [global+0] ; y
	PUSH	(INT)	4
	POP	(INT) [global+4] ; m
	PUSH	(INT)	5
	POP	(INT) [global+6] ; x1
	PUSH	(INT)	6
	POP	(INT) [global+10] ; x3
	PUSH	(INT)	4
	POP	(INT) [global+12] ; x4
	PUSH	(BOOL)	1
	POP	(BOOL) [global+14].0 ; x5
	PUSH(INT) 	7
	POP(INT) 	[global+16];a[0]
	PUSH(INT) 	8
	POP(INT) 	[global+18];a[1]
	PUSH(INT) 	8
	POP(INT) 	[global+20];a[2]
	PUSH	(INT)	8
	POP	(INT) [global+22] ; x6
	PUSH(INT)	3
	POP(INT) 	[global+26];s.b
	PUSH	(INT)	3
	POP	(INT) [global+28] ; x7
	PUSH	(INT)	2
	POP	(INT) [global+30] ; x8
	PUSH(INT) 	10
	POP(INT) 	[global+32];g[0]
	PUSH(INT) 	11
	POP(INT) 	[global+34];g[1]
	PUSH(INT) 	12
	POP(INT) 	[global+36];g[2]
	PUSH(INT) 	13
	POP(INT) 	[global+38];g[3]
	PUSH	(INT)	12
	POP	(INT) [global+40] ; x9
	PUSH(INT)	8
	POP(INT) 	[global+42];o.p[0].a
	PUSH(INT)	9
	POP(INT) 	[global+48];o.p[1].b
	PUSH(INT) 	6
	POP(INT) 	[global+50];o.q[0]
	PUSH(INT) 	7
	POP(INT) 	[global+52];o.q[1]
	PUSH	(INT)	8
	POP	(INT) [global+54] ; xa
	PUSH	(INT)	7
	POP	(INT) [global+58] ; xc
	PUSH	(WORD)	3
	POP	(WORD) [global+60] ; z
	PUSH	(INT)	8
	POP	(INT) [global+64] ; xe

	RTS
