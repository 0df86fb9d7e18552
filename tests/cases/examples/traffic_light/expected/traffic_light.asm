
DBI FILENAME traffic_light.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: PhaseTime,	 file traffic_light.st,	 line 3
; ----------------------------------------------------------------------
FUNCTION_PhaseTime:


	DBI POU_BEGIN

	LOCALDATA 5
		;Variable (0): PhaseTime ((INT),VAR)
		;Variable (2): phase ((INT),VAR_INPUT)
		;Variable (4): night ((BOOL),VAR_INPUT)

	;Read input parameters
	POP(BOOL) [local+4].0 ; night
	POP(INT) [local+2] ; phase

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 8
	;if
	PUSH(BOOL)	[local+4].0	;night
	JNC LABEL0001
	;then
DBI FILE 0 LINE 9
	PUSH(INT)	2
	POP(INT)	[local+0]	;PhaseTime
	JMP LABEL0002
	LABEL0001:
	;else
DBI FILE 0 LINE 11
	;case
	PUSH(INT)	[local+2]	;phase
	CASE (INT) 0 LABEL0004
	CASE (INT) 1 LABEL0005
	CASE (INT) 3 LABEL0005
	CASE (INT) 2 LABEL0006
	POP(INT)
DBI FILE 0 LINE 16
	PUSH(INT)	1
	POP(INT)	[local+0]	;PhaseTime
	JMP LABEL0003
	LABEL0004:
DBI FILE 0 LINE 12
	PUSH(INT)	20
	POP(INT)	[local+0]	;PhaseTime
	JMP LABEL0003
	LABEL0005:
DBI FILE 0 LINE 13
	PUSH(INT)	3
	POP(INT)	[local+0]	;PhaseTime
	JMP LABEL0003
	LABEL0006:
DBI FILE 0 LINE 14
	PUSH(INT)	10
	POP(INT)	[local+0]	;PhaseTime
	LABEL0003:

	LABEL0002:

	;Return value
	PUSH	(INT) [local+0] ; PhaseTime
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file traffic_light.st,	 line 21
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 14 bytes size

	; Initialization test
	PUSH (INT) [local+12] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0007
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+12] ; __ProgramInit
	LABEL0007:

	;Program body
DBI FILE 0 LINE 31
	PUSH(INT)	[local+4]	;ticks
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+4]	;ticks
DBI FILE 0 LINE 32
	;if
	;or
	PUSH(INT)	[local+4]	;ticks
	PUSH(INT)	[local+2]	;phase
	PUSH(BOOL)	[local+0].1	;night
	JSR FUNCTION_PhaseTime
	CMP GE(INT)
	DUP(BOOL)
	JC LABEL0009
	POP(BOOL)
	;and
	;and
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	0
	CMP EQ(INT)
	DUP(BOOL)
	JNC LABEL0011
	POP(BOOL)
	PUSH(BOOL)	[local+0].0	;request
	LABEL0011:

	DUP(BOOL)
	JNC LABEL0010
	POP(BOOL)
	PUSH(INT)	[local+4]	;ticks
	PUSH(INT)	5
	CMP GT(INT)
	LABEL0010:

	LABEL0009:

	JNC LABEL0008
	;then
DBI FILE 0 LINE 33
	PUSH(INT)	0
	POP(INT)	[local+4]	;ticks
DBI FILE 0 LINE 34
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+2]	;phase
DBI FILE 0 LINE 35
	;if
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	3
	CMP GT(INT)
	JNC LABEL0012
	;then
DBI FILE 0 LINE 36
	PUSH(INT)	0
	POP(INT)	[local+2]	;phase
DBI FILE 0 LINE 37
	PUSH(DINT)	[local+8]	;cycles
	PUSH(DINT)	1
	ADD(DINT)
	POP(DINT)	[local+8]	;cycles
	LABEL0012:

	LABEL0008:

DBI FILE 0 LINE 40
	;or
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	2
	CMP EQ(INT)
	DUP(BOOL)
	JC LABEL0013
	POP(BOOL)
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	3
	CMP EQ(INT)
	LABEL0013:

	POP(BOOL)	[local+0].2	;red
DBI FILE 0 LINE 41
	;or
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	1
	CMP EQ(INT)
	DUP(BOOL)
	JC LABEL0014
	POP(BOOL)
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	3
	CMP EQ(INT)
	LABEL0014:

	POP(BOOL)	[local+0].3	;yellow
DBI FILE 0 LINE 42
	;and
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	0
	CMP EQ(INT)
	DUP(BOOL)
	JNC LABEL0015
	POP(BOOL)
	PUSH(BOOL)	[local+0].1	;night
	NOT(BOOL)
	LABEL0015:

	POP(BOOL)	[local+0].4	;green
DBI FILE 0 LINE 43
	PUSH(INT)	[local+2]	;phase
	PUSH(INT)	2
	CMP EQ(INT)
	POP(BOOL)	[local+0].5	;walk
DBI FILE 0 LINE 44
	;if
	PUSH(BOOL)	[local+0].5	;walk
	JNC LABEL0016
	;then
DBI FILE 0 LINE 45
	PUSH(BOOL)	0
	POP(BOOL)	[local+0].0	;request
	LABEL0016:


	
	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: startup,	 file automatic declaration,	 line -1
; ----------------------------------------------------------------------
PROGRAM_startup:


	DBI POU_BEGIN

	LOCALSET 3 ; 0 bytes used
	;Call to global variable initialization
	JSR FUNCTION___GlobalInitialization__


	
	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: coldstart,	 file automatic declaration,	 line -1
; ----------------------------------------------------------------------
PROGRAM_coldstart:


	DBI POU_BEGIN

	LOCALSET 4 ; 0 bytes used
	;Call to global variable initialization
	JSR FUNCTION___GlobalInitialization__

	;Call to retain variable initialization
	JSR FUNCTION___RetainInitialization__


	
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
