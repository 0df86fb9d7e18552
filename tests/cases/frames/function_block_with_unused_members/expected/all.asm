
DBI FILENAME all.asm
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION_BLOCK: second_only,	 file main.st,	 line 1
; ----------------------------------------------------------------------
FUNCTION_second_only:


	DBI POU_BEGIN

	LOCALDATA 12
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;a

	DUP(UDINT)
	PUSH(UDINT)	2
	ADD(UDINT)
	POP(UDINT)[local+8]	;b

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 3
	PUSH(INT)	1
	POP*(INT) [local+8]	;b


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: nothing,	 file main.st,	 line 5
; ----------------------------------------------------------------------
FUNCTION_nothing:


	DBI POU_BEGIN

	LOCALDATA 12
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;a

	DUP(UDINT)
	PUSH(UDINT)	2
	ADD(UDINT)
	POP(UDINT)[local+8]	;b

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 7



	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: inout_first,	 file main.st,	 line 9
; ----------------------------------------------------------------------
FUNCTION_inout_first:


	DBI POU_BEGIN

	LOCALDATA 8
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	PUSHI(UDINT)
	POP(UDINT)[local+4]	;a

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 11
	PUSH(INT)	1
	POP*(INT) [local+4]	;a


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 13
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 16 bytes size

	; Initialization test
	PUSH (INT) [local+14] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+14] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 15
	PUSH&(UDINT)	[local+0]	;u
	JSR FUNCTION_second_only

DBI FILE 0 LINE 16
	PUSH&(UDINT)	[local+4]	;v
	JSR FUNCTION_nothing

DBI FILE 0 LINE 17
	PUSH&(INT)	[local+12]	;x
	POP(UDINT)	[local+8]	;w.a
	PUSH&(UDINT)	[local+8]	;w
	JSR FUNCTION_inout_first


	
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
