;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): s1 (SINT,VAR_GLOBAL)
		;Variable (2): s2 (INT,VAR_GLOBAL)
		;Variable (4): s3 (DINT,VAR_GLOBAL)
		;Variable (8): u1 (USINT,VAR_GLOBAL)
		;Variable (10): u2 (UINT,VAR_GLOBAL)
		;Variable (12): u3 (UDINT,VAR_GLOBAL)
		;Variable (16): u4 (UDINT,VAR_GLOBAL)
		;Variable (20): b1 (BYTE,VAR_GLOBAL)
		;Variable (22): w1 (WORD,VAR_GLOBAL)
		;Variable (24): d1 (DWORD,VAR_GLOBAL)
		;Variable (28): r1 (REAL,VAR_GLOBAL)
		;Variable (32): r2 (REAL,VAR_GLOBAL)
		;Variable (40): r3 (LREAL,VAR_GLOBAL)
		;Variable (48): r4 (REAL,VAR_GLOBAL)
		;Variable (52): r5 (REAL,VAR_GLOBAL)
		;Variable (56): t1 (BOOL,VAR_GLOBAL)
		;Variable (56): t2 (BOOL,VAR_GLOBAL)
		;Variable (56): t3 (BOOL,VAR_GLOBAL)
		;Variable (56): t4 (BOOL,VAR_GLOBAL)
		;Variable (56): t5 (BOOL,VAR_GLOBAL)
		;Variable (56): t6 (BOOL,VAR_GLOBAL)
		;Variable (58): s4 (INT,VAR_GLOBAL)
		;Variable (60): s5 (INT,VAR_GLOBAL)
	PUSH	(SINT)	-5
	POP	(SINT) [global+0] ; s1
	PUSH	(INT)	100000
	POP	(INT) [global+2] ; s2
	PUSH	(DINT)	9223372036854775807
	POP	(DINT) [global+4] ; s3
	PUSH	(USINT)	300
	POP	(USINT) [global+8] ; u1
	PUSH	(UINT)	-1
	POP	(UINT) [global+10] ; u2
	PUSH	(UDINT)	-1
	POP	(UDINT) [global+12] ; u3
	PUSH	(BYTE)	511
	POP	(BYTE) [global+20] ; b1
	PUSH	(WORD)	7
	POP	(WORD) [global+22] ; w1
	PUSH	(DWORD)	-1
	POP	(DWORD) [global+24] ; d1
	PUSH	(REAL)	1.000000
	POP	(REAL) [global+28] ; r1
	PUSH	(REAL)	0.000000
	POP	(REAL) [global+32] ; r2
	PUSH	(LREAL)	-2.500000
	POP	(LREAL) [global+40] ; r3
	PUSH	(BOOL)	1
	POP	(BOOL) [global+56].0 ; t1
	PUSH	(BOOL)	1
	POP	(BOOL) [global+56].1 ; t2
	PUSH	(BOOL)	1
	POP	(BOOL) [global+56].2 ; t3
	PUSH	(BOOL)	1
	POP	(BOOL) [global+56].5 ; t6
	PUSH	(INT)	-2
	POP	(INT) [global+60] ; s5

	RTS
