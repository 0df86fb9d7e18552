;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): y (INT,VAR_GLOBAL)
		;Variable (2): s (Mixed,VAR_GLOBAL)
		;Variable (20): l (INT,VAR_GLOBAL)
	PUSH	(INT)	4
	POP	(INT) [global+0] ; y
	PUSH(INT) 	4
	POP(INT) 	[global+2];s.a
	PUSH(INT) 	3
	POP(INT) 	[global+6];s.c
	PUSH(INT) 	4
	POP(INT) 	[global+8];s.d[0]
	PUSH(INT) 	6
	POP(INT) 	[global+10];s.d[1]
	PUSH	(INT)	5
	POP	(INT) [global+20] ; l

	RTS
