
DBI FILENAME main.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: g,	 file main.st,	 line 7
; ----------------------------------------------------------------------
FUNCTION_g:


	DBI POU_BEGIN

	LOCALDATA 24
		;Variable (0): g ((INT),VAR)
		;Variable (2): t ((UDINT),VAR_INPUT)
		;Variable (8): p ((UDINT),VAR_IN_OUT)
		;Variable (12): u ((UDINT),VAR_IN_OUT)
		;Variable (16): b ((BOOL),VAR_IN_OUT)
		;Variable (20): q ((UDINT),VAR_OUTPUT)

	;Read input parameters
	POP(UDINT)	[local+20]	;q
	POP(UDINT)	[local+16]	;b
	POP(UDINT)	[local+12]	;u
	POP(UDINT)	[local+8]	;p
	PUSH&(UDINT) [local+2] ; t
	MEMCPY 6

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 11
	PUSH(INT)	[local+4]	;t[1]
	POP(INT)	[local+0]	;g

	;Return value
	PUSH	(INT) [local+0] ; g
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 13
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 32 bytes size

	; Initialization test
	PUSH (INT) [local+30] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+30] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 15
	PUSH&(UDINT)	[local+0]	;t1
	PUSH&(UDINT)	[local+8]	;p1
	PUSH&(UDINT)	[local+16]	;u1
	PUSH&(BOOL)	[local+17].1	;b1
	PUSH&(UDINT)	[local+20]	;q1
	JSR FUNCTION_g
	POP(INT)	[local+28]	;x

	
	RTS
	DBI POU_END


;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------

	RTS
