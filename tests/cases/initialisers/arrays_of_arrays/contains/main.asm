;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): m1 (INT[][],VAR_GLOBAL)
		;Variable (8): m2 (INT[][],VAR_GLOBAL)
		;Variable (16): m3 (INT[][],VAR_GLOBAL)
		;Variable (28): m4 (INT[][],VAR_GLOBAL)
		;Variable (36): m5 (INT[][],VAR_GLOBAL)
		;Variable (44): g (INT[][],VAR_GLOBAL)
		;Variable (52): cube (INT[][][],VAR_GLOBAL)
		;Variable (68): m6 (INT[][],VAR_GLOBAL)
	PUSH(INT) 	1
	POP(INT) 	[global+0];m1[0][0]
	PUSH(INT) 	2
	POP(INT) 	[global+2];m1[0][1]
	PUSH(INT) 	1
	POP(INT) 	[global+4];m1[1][0]
	PUSH(INT) 	2
	POP(INT) 	[global+6];m1[1][1]
	PUSH(INT) 	3
	POP(INT) 	[global+8];m2[0][0]
	PUSH(INT) 	4
	POP(INT) 	[global+10];m2[0][1]
	PUSH(INT) 	5
	POP(INT) 	[global+12];m2[1][0]
	PUSH(INT) 	7
	POP(INT) 	[global+16];m3[0][0]
	PUSH(INT) 	8
	POP(INT) 	[global+18];m3[0][1]
	PUSH(INT) 	7
	POP(INT) 	[global+20];m3[1][0]
	PUSH(INT) 	8
	POP(INT) 	[global+22];m3[1][1]
	PUSH(INT) 	1
	POP(INT) 	[global+28];m4[0][0]
	PUSH(INT) 	3
	POP(INT) 	[global+32];m4[1][0]
	PUSH(INT) 	4
	POP(INT) 	[global+34];m4[1][1]
	PUSH(INT) 	1
	POP(INT) 	[global+44];g[0][0]
	PUSH(INT) 	2
	POP(INT) 	[global+46];g[0][1]
	PUSH(INT) 	1
	POP(INT) 	[global+48];g[1][0]
	PUSH(INT) 	2
	POP(INT) 	[global+50];g[1][1]
	PUSH(INT) 	1
	POP(INT) 	[global+52];cube[0][0][0]
	PUSH(INT) 	2
	POP(INT) 	[global+54];cube[0][0][1]
	PUSH(INT) 	1
	POP(INT) 	[global+56];cube[0][1][0]
	PUSH(INT) 	2
	POP(INT) 	[global+58];cube[0][1][1]
	PUSH(INT) 	1
	POP(INT) 	[global+60];cube[1][0][0]
	PUSH(INT) 	2
	POP(INT) 	[global+62];cube[1][0][1]
	PUSH(INT) 	1
	POP(INT) 	[global+64];cube[1][1][0]
	PUSH(INT) 	2
	POP(INT) 	[global+66];cube[1][1][1]
	PUSH(INT) 	1
	POP(INT) 	[global+68];m6[0][0]
	PUSH(INT) 	2
	POP(INT) 	[global+70];m6[0][1]

	RTS
