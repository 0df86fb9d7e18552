;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (2001): a (BOOL,VAR_GLOBAL AT QX0.9)
		;Variable (2001): b (BOOL,VAR_GLOBAL AT QX0.9)
		;Variable (3004): p (Pair,VAR_GLOBAL AT MW4)
		;Variable (3008): t (INT[],VAR_GLOBAL AT MW8)
		;Variable (3020): s (INT,VAR_GLOBAL AT MW20)
		;Variable (3024): n (DINT,VAR_GLOBAL AT MD24)
		;Variable (1001): i (BOOL,VAR_GLOBAL AT I1.2)
	PUSH	(BOOL)	1
	POP	(BOOL) [2001].1 ; a
	PUSH	(BOOL)	1
	POP	(BOOL) [2001].1 ; b
	PUSH(INT)	3
	POP(INT) 	[3006];p.hi
	PUSH(INT) 	6
	POP(INT) 	[3008];t[0]
	PUSH(INT) 	7
	POP(INT) 	[3010];t[1]
	PUSH	(INT)	4
	POP	(INT) [3020] ; s
	PUSH	(BOOL)	1
	POP	(BOOL) [1001].2 ; i

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------
		;Variable (3030): r (INT,VAR_GLOBAL AT MW30)
	PUSH	(INT)	8
	POP	(INT) [3030] ; r

	RTS
