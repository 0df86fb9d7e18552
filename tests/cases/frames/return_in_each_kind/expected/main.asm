
DBI FILENAME main.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: f,	 file main.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_f:


	DBI POU_BEGIN

	LOCALDATA 3
		;Variable (0): f ((INT),VAR)
		;Variable (2): a ((BOOL),VAR_INPUT)

	;Read input parameters
	POP(BOOL) [local+2].0 ; a

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 3
	JMP LABEL0001
DBI FILE 0 LINE 4
	JMP LABEL0001
DBI FILE 0 LINE 5
	;if
	PUSH(BOOL)	[local+2].0	;a
	JNC LABEL0002
	;then
DBI FILE 0 LINE 5
	JMP LABEL0001
	LABEL0002:


	;Return value
	LABEL0001:
	PUSH	(INT) [local+0] ; f
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: b,	 file main.st,	 line 7
; ----------------------------------------------------------------------
FUNCTION_b:


	DBI POU_BEGIN

	LOCALDATA 8
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	POP(UDINT)[local+4]	;i

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 9
	PUSH(INT)	1
	POP*(INT) [local+4]	;i
DBI FILE 0 LINE 10
	JMP LABEL0003

		LABEL0003:


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 12
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 6 bytes size

	; Initialization test
	PUSH (INT) [local+4] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0004
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+4] ; __ProgramInit
	LABEL0004:

	;Program body
DBI FILE 0 LINE 14
	PUSH(BOOL)	1
	JSR FUNCTION_f
	POP(INT)	[local+0]	;x
DBI FILE 0 LINE 15
	PUSH(INT)	[local+0]	;x
	POP(INT)	[local+2]	;v.i
	PUSH&(UDINT)	[local+2]	;v
	JSR FUNCTION_b

DBI FILE 0 LINE 16
	JMP LABEL0005

		LABEL0005:

	
	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: second,	 file main.st,	 line 18
; ----------------------------------------------------------------------
PROGRAM_second:


	DBI POU_BEGIN

	NOP ; begin
	NOP
	LOCALSET 2 ; 2 bytes size
	;Call to global variable initialization
	JSR FUNCTION___GlobalInitialization__

	;Call to retain variable initialization
	JSR FUNCTION___RetainInitialization__


	; Initialization test
	PUSH (INT) [local+0] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0006
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+0] ; __ProgramInit
	LABEL0006:

	;Program body
DBI FILE 0 LINE 19


	NOP ; end
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
