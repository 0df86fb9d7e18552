;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): inst (fb,VAR_GLOBAL)
	PUSH(INT) 	5
	POP(INT) 	[global+0];inst.a
	PUSH(INT) 	6
	POP(INT) 	[global+2];inst.o
	PUSH(INT) 	7
	POP(INT) 	[global+4];inst.io
	PUSH(INT) 	8
	POP(INT) 	[global+8];inst.v

	RTS
