;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): o (Odd,VAR_GLOBAL)
		;Variable (7): bits (BOOL[],VAR_GLOBAL)
		;Variable (10): rest (BOOL[],VAR_GLOBAL)
		;Variable (12): few (BOOL[],VAR_GLOBAL)
		;Variable (13): arr (Flags[],VAR_GLOBAL)
		;Variable (15): z (BOOL,VAR_GLOBAL)
		;Variable (15): w (BOOL,VAR_GLOBAL)
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+0].0;o.a
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+4].1;o.b
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+4].2;o.c
	PUSH(BYTE) 	1
	POP(BYTE) 	[global+5];o.n
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+6].0;o.d
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].0;bits[0]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].1;bits[1]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].2;bits[2]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].3;bits[3]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].4;bits[4]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].5;bits[5]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].6;bits[6]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+7].7;bits[7]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].0;bits[8]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].1;bits[9]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].2;bits[10]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].3;bits[11]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].4;bits[12]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].5;bits[13]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].6;bits[14]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+8].7;bits[15]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+9].0;bits[16]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+11].0;rest[8]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+12].0;few[0]
	PUSH(BOOL)	1
	POP(BOOL) 	[global+13].1;arr[0].y
	PUSH(BOOL)	1
	POP(BOOL) 	[global+14].0;arr[1].x
	PUSH	(BOOL)	1
	POP	(BOOL) [global+15].0 ; z
	PUSH	(BOOL)	1
	POP	(BOOL) [global+15].1 ; w

	RTS
