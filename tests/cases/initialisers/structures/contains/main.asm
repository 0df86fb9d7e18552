;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): s0 (Outer,VAR_GLOBAL)
		;Variable (18): s1 (Outer,VAR_GLOBAL)
		;Variable (36): s2 (Outer,VAR_GLOBAL)
		;Variable (54): s3 (Outer,VAR_GLOBAL)
		;Variable (72): s4 (Outer,VAR_GLOBAL)
		;Variable (90): s5 (Outer,VAR_GLOBAL)
		;Variable (108): i0 (Inner,VAR_GLOBAL)
		;Variable (112): s6 (Outer,VAR_GLOBAL)
	PUSH(INT) 	2
	POP(INT) 	[global+0];s0.a
	PUSH(INT) 	3
	POP(INT) 	[global+2];s0.list[0]
	PUSH(INT) 	1
	POP(INT) 	[global+6];s0.in1.x
	PUSH(INT) 	1
	POP(INT) 	[global+10];s0.in2.x
	PUSH(INT)	4
	POP(INT) 	[global+16];s0.in3.y
	PUSH(INT)	6
	POP(INT) 	[global+18];s1.a
	PUSH(INT) 	3
	POP(INT) 	[global+20];s1.list[0]
	PUSH(INT) 	1
	POP(INT) 	[global+24];s1.in1.x
	PUSH(INT) 	1
	POP(INT) 	[global+28];s1.in2.x
	PUSH(INT)	4
	POP(INT) 	[global+34];s1.in3.y
	PUSH(INT) 	3
	POP(INT) 	[global+38];s2.list[0]
	PUSH(INT) 	1
	POP(INT) 	[global+42];s2.in1.x
	PUSH(INT) 	1
	POP(INT) 	[global+46];s2.in2.x
	PUSH(INT)	4
	POP(INT) 	[global+52];s2.in3.y
	PUSH(INT) 	3
	POP(INT) 	[global+56];s3.list[0]
	PUSH(INT) 	1
	POP(INT) 	[global+60];s3.in1.x
	PUSH(INT)	7
	POP(INT) 	[global+64];s3.in2.x
	PUSH(INT)	4
	POP(INT) 	[global+70];s3.in3.y
	PUSH(INT) 	3
	POP(INT) 	[global+74];s4.list[0]
	PUSH(INT)	5
	POP(INT) 	[global+80];s4.in1.y
	PUSH(INT) 	1
	POP(INT) 	[global+82];s4.in2.x
	PUSH(INT)	4
	POP(INT) 	[global+88];s4.in3.y
	PUSH(INT) 	2
	POP(INT) 	[global+90];s5.a
	PUSH(INT) 	3
	POP(INT) 	[global+92];s5.list[0]
	PUSH(INT) 	1
	POP(INT) 	[global+96];s5.in1.x
	PUSH(INT) 	1
	POP(INT) 	[global+100];s5.in2.x
	PUSH(INT)	4
	POP(INT) 	[global+106];s5.in3.y
	PUSH(INT)	9
	POP(INT) 	[global+108];i0.x
	PUSH(INT) 	3
	POP(INT) 	[global+114];s6.list[0]
	PUSH(INT)	9
	POP(INT) 	[global+118];s6.in1.x
	PUSH(INT) 	1
	POP(INT) 	[global+122];s6.in2.x
	PUSH(INT)	4
	POP(INT) 	[global+128];s6.in3.y

	RTS
