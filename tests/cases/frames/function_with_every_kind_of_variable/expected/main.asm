
DBI FILENAME main.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: mix,	 file main.st,	 line 8
; ----------------------------------------------------------------------
FUNCTION_mix:


	DBI POU_BEGIN

	LOCALDATA 32
		;Variable (0): mix ((INT),VAR)
		;Variable (2): n ((INT),VAR_INPUT)
		;Variable (4): on ((BOOL),VAR_INPUT)
		;Variable (8): p ((UDINT),VAR_INPUT)
		;Variable (16): io ((DINT),VAR_IN_OUT)
		;Variable (20): o ((INT),VAR_OUTPUT)
		;Variable (24): k ((INT),VAR)
		;Variable (26): t ((UDINT),VAR)
		;Variable (30): z ((INT),VAR)
		;Variable (-1): c ((INT),VAR)

	;Read input parameters
	POP(UDINT)	[local+20]	;o
	POP(UDINT)	[local+16]	;io
	PUSH&(UDINT) [local+8] ; p
	MEMCPY 8
	POP(BOOL) [local+4].0 ; on
	POP(INT) [local+2] ; n

	;Local variable initialization
	PUSH	(INT)	5
	POP	(INT) [local+24] ; k
	PUSH(INT) 	1
	POP(INT) 	[local+26];t[0]
	PUSH(INT) 	2
	POP(INT) 	[local+28];t[1]

	;Function body
DBI FILE 0 LINE 14
	PUSH(INT)	[local+2]	;n
	PUSH(INT)	9
	ADD(INT)
	POP(INT)	[local+0]	;mix

	;Return value
	PUSH	(INT) [local+0] ; mix
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 16
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 18 bytes size

	; Initialization test
	PUSH (INT) [local+16] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+16] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 18
	PUSH(INT)	[local+14]	;y
	PUSH(BOOL)	1
	PUSH&(UDINT)	[local+0]	;s
	PUSH&(DINT)	[local+8]	;d
	PUSH&(INT)	[local+14]	;y
	JSR FUNCTION_mix
	POP(INT)	[local+12]	;x

	
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
