;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): c (INT,VAR_GLOBAL)
		;Variable (2): b (BOOL,VAR_GLOBAL)
		;Variable (4): a (INT[],VAR_GLOBAL)
		;Variable (8): p (Pair,VAR_GLOBAL)
		;Variable (12): r (REAL,VAR_GLOBAL)
		;Variable (16): v (INT,VAR_GLOBAL)
	PUSH	(INT)	9
	POP	(INT) [global+0] ; c
	PUSH	(BOOL)	1
	POP	(BOOL) [global+2].0 ; b
	PUSH(INT) 	1
	POP(INT) 	[global+4];a[0]
	PUSH(INT) 	2
	POP(INT) 	[global+6];a[1]
	PUSH(INT)	3
	POP(INT) 	[global+8];p.a
	PUSH	(REAL)	1.500000
	POP	(REAL) [global+12] ; r
	PUSH	(INT)	6
	POP	(INT) [global+16] ; v

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------
		;Variable (0): cr (INT,VAR_GLOBAL)
		;Variable (2): ar (INT[],VAR_GLOBAL)
	PUSH	(INT)	4
	POP	(INT) [retain+0] ; cr
	PUSH(INT) 	5
	POP(INT) 	[retain+2];ar[0]

	RTS
