
DBI FILENAME main.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: f,	 file main.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_f:


	DBI POU_BEGIN

	LOCALDATA 4
		;Variable (0): f ((INT),VAR)
		;Variable (2): a ((INT),VAR_INPUT)

	;Read input parameters
	POP(INT) [local+2] ; a

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 3
	PUSH(INT)	[local+2]	;a
	POP(INT)	[local+0]	;f

	;Return value
	PUSH	(INT) [local+0] ; f
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: F__1,	 file main.st,	 line 5
; ----------------------------------------------------------------------
FUNCTION_F__1:


	DBI POU_BEGIN

	LOCALDATA 8
		;Variable (0): F ((DINT),VAR)
		;Variable (4): a ((DINT),VAR_INPUT)

	;Read input parameters
	POP(DINT) [local+4] ; a

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 7
	PUSH(DINT)	[local+4]	;a
	POP(DINT)	[local+0]	;F

	;Return value
	PUSH	(DINT) [local+0] ; F
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: f__2,	 file main.st,	 line 9
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_f__2:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 8
;;			;Variable (0): f ((REAL),VAR)
;;			;Variable (4): a ((REAL),VAR_INPUT)
;;	
;;		;Read input parameters
;;		POP(REAL) [local+4] ; a
;;	
;;		;Local variable initialization
;;	
;;		;Function body
;;	DBI FILE 0 LINE 11
;;		PUSH(REAL)	[local+4]	;a
;;		POP(REAL)	[local+0]	;f
;;	
;;		;Return value
;;		PUSH	(REAL) [local+0] ; f
;;		RTS
;;	
;;		DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 17
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 10 bytes size

	; Initialization test
	PUSH (INT) [local+8] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+8] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 19
	PUSH(INT)	[local+0]	;i
	JSR FUNCTION_f
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 20
	PUSH(DINT)	[local+4]	;d
	JSR FUNCTION_F__1
	POP(DINT)	[local+4]	;d

	
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
