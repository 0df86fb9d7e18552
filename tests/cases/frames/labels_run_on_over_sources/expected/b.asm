
DBI FILENAME b.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: f,	 file sub/a.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_f:


	DBI POU_BEGIN

	LOCALDATA 1

	;Read input parameters

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 2
	JMP LABEL0001

	;Return value
	LABEL0001:
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: b,	 file b.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_b:


	DBI POU_BEGIN

	LOCALDATA 8
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	POP(UDINT)[local+4]	;x

	POP(UDINT)


	;FunctionBlock body
DBI FILE 1 LINE 3
	PUSH(INT)	1
	POP*(INT) [local+4]	;x
DBI FILE 1 LINE 4
	JMP LABEL0002

		LABEL0002:


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file b.st,	 line 6
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 4 bytes size

	; Initialization test
	PUSH (INT) [local+2] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0003
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+2] ; __ProgramInit
	LABEL0003:

	;Program body
DBI FILE 1 LINE 8
	JSR FUNCTION_f
DBI FILE 1 LINE 9
	PUSH&(UDINT)	[local+0]	;v
	JSR FUNCTION_b


	
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
