;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): x (INT,VAR_GLOBAL)
		;Variable (-1): late (INT,VAR_GLOBAL)
		;Variable (-1): p (Pair,VAR_GLOBAL)
	PUSH	(INT)	5
	POP	(INT) [global+0] ; x
	PUSH	(INT)	6
	POP	(INT) [global+-1] ; late
	PUSH(INT)	2
	POP(INT) 	[global+-2];p.b

	RTS
