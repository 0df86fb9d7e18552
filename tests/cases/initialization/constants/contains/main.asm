;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): a (INT[],VAR_GLOBAL)
		;Variable (4): p (Pair,VAR_GLOBAL)
		;Variable (8): v (INT,VAR_GLOBAL)
	PUSH(INT) 	1
	POP(INT) 	[global+0];a[0]
	PUSH(INT) 	2
	POP(INT) 	[global+2];a[1]
	PUSH(INT)	3
	POP(INT) 	[global+4];p.a
	PUSH	(INT)	6
	POP	(INT) [global+8] ; v

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------
		;Variable (0): ar (INT[],VAR_GLOBAL)
	PUSH(INT) 	5
	POP(INT) 	[retain+0];ar[0]

	RTS
