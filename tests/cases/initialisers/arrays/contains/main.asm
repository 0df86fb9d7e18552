		;Variable (0): n (INT,VAR_GLOBAL)
		;Variable (2): s (Pair,VAR_GLOBAL)
		;Variable (6): a1 (INT[],VAR_GLOBAL)
		;Variable (14): a2 (INT[],VAR_GLOBAL)
		;Variable (18): a3 (INT[],VAR_GLOBAL)
		;Variable (26): a4 (INT[],VAR_GLOBAL)
		;Variable (30): a5 (INT[],VAR_GLOBAL)
		;Variable (40): a6 (INT[],VAR_GLOBAL)
		;Variable (52): a7 (INT[],VAR_GLOBAL)
		;Variable (56): a8 (INT[2dim],VAR_GLOBAL)
		;Variable (64): a9 (INT[],VAR_GLOBAL)
		;Variable (68): b1 (INT[],VAR_GLOBAL)
		;Variable (74): b2 (INT[],VAR_GLOBAL)
		;Variable (80): b3 (INT[],VAR_GLOBAL)
		;Variable (86): b4 (INT[],VAR_GLOBAL)
	PUSH	(INT)	2
	POP	(INT) [global+0] ; n
	PUSH(INT)	2
	POP(INT) 	[global+4];s.b
	PUSH(INT) 	1
	POP(INT) 	[global+6];a1[0]
	PUSH(INT) 	2
	POP(INT) 	[global+8];a1[1]
	PUSH(INT) 	1
	POP(INT) 	[global+14];a2[0]
	PUSH(INT) 	2
	POP(INT) 	[global+16];a2[1]
	PUSH(INT) 	1
	POP(INT) 	[global+18];a3[0]
	PUSH(INT) 	1
	POP(INT) 	[global+20];a3[1]
	PUSH(INT) 	5
	POP(INT) 	[global+22];a3[2]
	PUSH(INT) 	5
	POP(INT) 	[global+24];a3[3]
	PUSH(INT) 	6
	POP(INT) 	[global+26];a4[0]
	PUSH(INT) 	1
	POP(INT) 	[global+30];a5[0]
	PUSH(INT) 	1
	POP(INT) 	[global+32];a5[1]
	PUSH(INT) 	4
	POP(INT) 	[global+34];a5[2]
	PUSH(INT) 	4
	POP(INT) 	[global+36];a5[3]
	PUSH(INT) 	4
	POP(INT) 	[global+38];a5[4]
	PUSH(INT) 	1
	POP(INT) 	[global+40];a6[0]
	PUSH(INT) 	1
	POP(INT) 	[global+42];a6[1]
	PUSH(INT) 	2
	POP(INT) 	[global+44];a6[2]
	PUSH(INT) 	2
	POP(INT) 	[global+46];a6[3]
	PUSH(INT) 	3
	POP(INT) 	[global+48];a6[4]
	PUSH(INT) 	1
	POP(INT) 	[global+56];a8[0]
	PUSH(INT) 	2
	POP(INT) 	[global+58];a8[1]
	PUSH(INT) 	3
	POP(INT) 	[global+60];a8[2]
	PUSH(INT) 	4
	POP(INT) 	[global+62];a8[3]
	PUSH(INT) 	2
	POP(INT) 	[global+68];b1[0]
	PUSH(INT) 	3
	POP(INT) 	[global+70];b1[1]
	PUSH(INT) 	2
	POP(INT) 	[global+72];b1[2]
	PUSH(INT) 	9
	POP(INT) 	[global+74];b2[0]
	PUSH(INT) 	9
	POP(INT) 	[global+76];b2[1]
	PUSH(INT) 	9
	POP(INT) 	[global+78];b2[2]
	PUSH(INT) 	4
	POP(INT) 	[global+80];b3[0]
	PUSH(INT) 	4
	POP(INT) 	[global+82];b3[1]
	PUSH(INT) 	2
	POP(INT) 	[global+84];b3[2]

	RTS
