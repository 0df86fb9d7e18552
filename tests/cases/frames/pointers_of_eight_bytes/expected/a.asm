
DBI FILENAME a.asm
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: f,	 file main.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_f:


	DBI POU_BEGIN

	LOCALDATA 16
		;Variable (0): f ((INT),VAR)
		;Variable (2): a ((INT),VAR_INPUT)
		;Variable (8): r ((INT),VAR_IN_OUT)

	;Read input parameters
	POP(UDINT)	[local+8]	;r
	POP(INT) [local+2] ; a

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 4
	PUSH(INT)	[local+2]	;a
	PUSH*(INT)	[local+8]	;r
	ADD(INT)
	POP(INT)	[local+0]	;f

	;Return value
	PUSH	(INT) [local+0] ; f
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: b,	 file main.st,	 line 6
; ----------------------------------------------------------------------
FUNCTION_b:


	DBI POU_BEGIN

	LOCALDATA 32
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;x

	DUP(UDINT)
	PUSH(UDINT)	2
	ADD(UDINT)
	POP(UDINT)[local+16]	;y

	DUP(UDINT)
	PUSH(UDINT)	8
	ADD(UDINT)
	PUSHI(UDINT)
	POP(UDINT)[local+24]	;z

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 9
	PUSH*(INT) [local+16]	;y
	PUSH*(INT) [local+24]	;z
	ADD(INT)
	POP*(INT) [local+8]	;x


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 11
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 20 bytes size

	; Initialization test
	PUSH (INT) [local+18] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+18] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 13
	PUSH(INT)	[local+16]	;n
	PUSH&(INT)	[local+16]	;n
	JSR FUNCTION_f
	POP(INT)	[local+16]	;n
DBI FILE 0 LINE 14
	PUSH(INT)	[local+16]	;n
	POP(INT)	[local+2]	;v.y
	PUSH&(INT)	[local+16]	;n
	POP(UDINT)	[local+8]	;v.z
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
