
DBI FILENAME main.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: f,	 file main.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_f:


	DBI POU_BEGIN

	LOCALDATA 3012
		;Variable (0): f ((INT),VAR)
		;Variable (3010): x ((INT),VAR)
		;Variable (0): r ((INT),VAR)
		;Variable (4): l ((DINT),VAR)

	;Read input parameters

	;Local variable initialization
	PUSH	(INT)	7
	POP	(INT) [3010] ; x

	;Function body
DBI FILE 0 LINE 5
	PUSH(INT)	[3010]	;x
	POP(INT)	[local+0]	;f

	;Return value
	PUSH	(INT) [local+0] ; f
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 7
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 3021 bytes size

	; Initialization test
	PUSH (INT) [local+2] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+2] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 11
	JSR FUNCTION_f
	POP(INT)	[local+0]	;y

	
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
