
DBI FILENAME all.asm
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION_BLOCK: all,	 file main.st,	 line 8
; ----------------------------------------------------------------------
FUNCTION_all:


	DBI POU_BEGIN

	LOCALDATA 48
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;i

	DUP(UDINT)
	PUSH(UDINT)	2	;0x00000002
	ADD(UDINT)
	POP(UDINT)[local+8]	;b0

	DUP(UDINT)
	PUSH(UDINT)	16777218	;0x01000002
	ADD(UDINT)
	POP(UDINT)[local+12]	;b1

	DUP(UDINT)
	PUSH(UDINT)	4
	ADD(UDINT)
	POP(UDINT)[local+16]	;o

	DUP(UDINT)
	PUSH(UDINT)	8
	ADD(UDINT)
	PUSHI(UDINT)
	POP(UDINT)[local+20]	;io

	DUP(UDINT)
	PUSH(UDINT)	12	;0x0000000C
	ADD(UDINT)
	PUSHI(UDINT)
	POP(UDINT)[local+24]	;ib

	DUP(UDINT)
	PUSH(UDINT)	16
	ADD(UDINT)
	POP(UDINT)[local+28]	;p

	DUP(UDINT)
	PUSH(UDINT)	20
	ADD(UDINT)
	POP(UDINT)[local+32]	;t

	DUP(UDINT)
	PUSH(UDINT)	26	;0x0000001A
	ADD(UDINT)
	POP(UDINT)[local+36]	;b2

	DUP(UDINT)
	PUSH(UDINT)	28
	ADD(UDINT)
	POP(UDINT)[local+40]	;idle

	DUP(UDINT)
	PUSH(UDINT)	30
	ADD(UDINT)
	POP(UDINT)[local+44]	;g

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 14
	PUSH*(INT) [local+20]	;io
	POP*(INT) [local+4]	;i
DBI FILE 0 LINE 15
	PUSH*(BOOL) [local+24]	;ib
	POP*(BOOL) [local+12]	;b1
DBI FILE 0 LINE 16
	PUSH(DINT)	1
	POP*(DINT) [local+16]	;o
DBI FILE 0 LINE 17
	PUSH(INT)	2
	PUSH(UDINT) [local+28]	;&p
	POPI(INT)
DBI FILE 0 LINE 18
	PUSH(INT)	3
	PUSH(UDINT) [local+32]	;&t
	PUSH(UDINT)	2
	ADD(UDINT)
	POPI(INT)
DBI FILE 0 LINE 19
	PUSH*(BOOL) [local+8]	;b0
	POP*(BOOL) [local+36]	;b2
DBI FILE 0 LINE 20
	PUSH(INT)	4
	POP(INT)	[global+0]	;g


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 22
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 38 bytes size

	; Initialization test
	PUSH (INT) [local+36] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+36] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 24
	PUSH&(INT)	[local+32]	;x
	POP(UDINT)	[local+8]	;v.io
	PUSH&(BOOL)	[local+34].0	;b
	POP(UDINT)	[local+12].0	;v.ib
	PUSH&(UDINT)	[local+0]	;v
	JSR FUNCTION_all


	
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
		;Variable (0): g (INT,VAR_GLOBAL)

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
