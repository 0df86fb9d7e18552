
DBI FILENAME main.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: f,	 file main.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_f:


	DBI POU_BEGIN

	LOCALDATA 2
		;Variable (0): b0 ((BOOL),VAR)
		;Variable (0): b1 ((BOOL),VAR)
		;Variable (0): b2 ((BOOL),VAR)
		;Variable (0): b3 ((BOOL),VAR)
		;Variable (0): b4 ((BOOL),VAR)
		;Variable (0): b5 ((BOOL),VAR)
		;Variable (0): b6 ((BOOL),VAR)
		;Variable (0): b7 ((BOOL),VAR)
		;Variable (1): b8 ((BOOL),VAR)

	;Read input parameters

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 3
	PUSH(BOOL)	[local+0].7	;b7
	POP(BOOL)	[local+1].0	;b8

	;Return value
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: g,	 file main.st,	 line 5
; ----------------------------------------------------------------------
FUNCTION_g:


	DBI POU_BEGIN

	LOCALDATA 1
		;Variable (0): b0 ((BOOL),VAR)
		;Variable (0): b1 ((BOOL),VAR)

	;Read input parameters

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 7
	PUSH(BOOL)	[local+0].0	;b0
	POP(BOOL)	[local+0].1	;b1

	;Return value
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 9
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 2 bytes size

	; Initialization test
	PUSH (INT) [local+0] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+0] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 10
	JSR FUNCTION_f
DBI FILE 0 LINE 11
	JSR FUNCTION_g

	
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
