
DBI FILENAME tank.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: Clamp,	 file tank.st,	 line 48
; ----------------------------------------------------------------------
FUNCTION_Clamp:


	DBI POU_BEGIN

	LOCALDATA 8
		;Variable (0): Clamp ((INT),VAR)
		;Variable (2): value ((INT),VAR_INPUT)
		;Variable (4): low ((INT),VAR_INPUT)
		;Variable (6): high ((INT),VAR_INPUT)

	;Read input parameters
	POP(INT) [local+6] ; high
	POP(INT) [local+4] ; low
	POP(INT) [local+2] ; value

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 52
	PUSH(INT)	[local+4]	;low
	PUSH(INT)	[local+2]	;value
	MAX(INT)
	PUSH(INT)	[local+6]	;high
	MIN(INT)
	POP(INT)	[local+0]	;Clamp

	;Return value
	PUSH	(INT) [local+0] ; Clamp
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: second,	 file tank.st,	 line 55
; ----------------------------------------------------------------------
PROGRAM_second:


	DBI POU_BEGIN

	NOP ; begin
	NOP
	LOCALSET 2 ; 16 bytes size

	; Initialization test
	PUSH (INT) [local+14] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization
	PUSH	(INT)	1
	POP	(INT) [local+0] ; i
	PUSH	(INT)	1
	POP	(INT) [local+2] ; filled
	PUSH	(REAL)	2.000000
	POP	(REAL) [local+4] ; scale
	PUSH(INT) 	1
	POP(INT) 	[local+8];steps[0]
	PUSH(INT) 	2
	POP(INT) 	[local+10];steps[1]

	PUSH (INT) 1234 
	POP (INT) [local+14] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 61
	PUSH(INT)	0
	POP(INT)	[local+2]	;filled
DBI FILE 0 LINE 62
	PUSH(INT)	1
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 63
	;while
	LABEL0002:
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	2
	CMP LE(INT)
	JNC LABEL0003
DBI FILE 0 LINE 64
	PUSH(INT)	[local+2]	;filled
	;runtime array address
	PUSH&(INT)[global+12]	;&tanks[0].level
	PUSH(INT)	[local+0]	;i
	ADDRESS(INT) 24 1 2
	PUSHI(INT)
	PUSH(INT)	0
	PUSH(INT)	100
	JSR FUNCTION_Clamp
	ADD(INT)
	POP(INT)	[local+2]	;filled
DBI FILE 0 LINE 65
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;i
	JMP LABEL0002
	LABEL0003:

DBI FILE 0 LINE 67
	PUSH(INT)	[local+2]	;filled
	PUSH(INT)	2
	DIV(INT)
	POP(INT)	[global+80]	;mode
DBI FILE 0 LINE 68
	;if
	;and
	PUSH(INT)	[global+80]	;mode
	PUSH(Percent)	[global+64]	;limits.high
	CMP GT(INT)
	DUP(BOOL)
	JNC LABEL0005
	POP(BOOL)
	PUSH(BOOL)	[retain+12].0	;tripped
	NOT(BOOL)
	LABEL0005:

	JNC LABEL0004
	;then
DBI FILE 0 LINE 69
	PUSH(BOOL)	0
	POP(BOOL)	[2000].3	;pump
DBI FILE 0 LINE 70
	PUSH(BOOL)	1
	POP(BOOL)	[retain+12].0	;tripped
DBI FILE 0 LINE 71
	PUSH(BOOL)	1
	POP(BOOL)	[global+20].1	;tanks[0].outlet
DBI FILE 0 LINE 72
	PUSH(BOOL)	0
	POP(BOOL)	[global+69].1	;alarms[9]
	JMP LABEL0006
	LABEL0004:
	PUSH(INT)	[global+80]	;mode
	PUSH(Percent)	[global+62]	;limits.low
	CMP LT(INT)
	JNC LABEL0007
DBI FILE 0 LINE 74
	PUSH(BOOL)	1
	POP(BOOL)	[2000].3	;pump
DBI FILE 0 LINE 75
	PUSH(INT)	[2002]	;speed
	PUSH(INT)	[local+10]	;steps[1]
	ADD(INT)
	POP(INT)	[2002]	;speed
DBI FILE 0 LINE 76
	PUSH(INT)	[retain+4]	;starts[0]
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[retain+4]	;starts[0]
	JMP LABEL0006
	;else
	LABEL0007:
DBI FILE 0 LINE 78
	PUSH(UDINT)	[retain+0]	;pumped
	PUSH(UDINT)	1
	ADD(UDINT)
	POP(UDINT)	[retain+0]	;pumped
	LABEL0006:
DBI FILE 0 LINE 80
	PUSH(REAL)	[retain+8]	;total
	PUSH(REAL)	[global+32]	;tanks[1].area
	PUSH(REAL)	[local+4]	;scale
	MUL(REAL)
	ADD(REAL)
	POP(REAL)	[retain+8]	;total
DBI FILE 0 LINE 81
	PUSH&(UDINT)	[global+62]	;limits
	PUSH&(UDINT)	[global+38]	;tanks[1].range
	MEMCPY	6


	NOP ; end
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
		;Variable (0): WINDOW (INT[],VAR_GLOBAL)
		;Variable (8): tanks (Vessel[],VAR_GLOBAL)
		;Variable (54): setpoints (Percent[],VAR_GLOBAL)
		;Variable (62): limits (Bounds,VAR_GLOBAL)
		;Variable (2000): pump (BOOL,VAR_GLOBAL AT QX0.3)
		;Variable (2002): speed (INT,VAR_GLOBAL AT QW2)
		;Variable (68): alarms (BOOL[],VAR_GLOBAL)
		;Variable (72): ratio (REAL,VAR_GLOBAL)
		;Variable (76): mask (DWORD,VAR_GLOBAL)
		;Variable (80): mode (INT,VAR_GLOBAL)
		;Variable (82): idle (INT,VAR_GLOBAL)
	PUSH(INT) 	5
	POP(INT) 	[global+0];WINDOW[0]
	PUSH(INT) 	10
	POP(INT) 	[global+2];WINDOW[1]
	PUSH(INT) 	10
	POP(INT) 	[global+4];WINDOW[2]
	PUSH(REAL)	1.500000
	POP(REAL) 	[global+8];tanks[0].area
	PUSH(INT)	30
	POP(INT) 	[global+12];tanks[0].level
	PUSH(Percent)	20
	POP(Percent) 	[global+14];tanks[0].range.low
	PUSH(Percent)	90
	POP(Percent) 	[global+16];tanks[0].range.high
	PUSH(BOOL)	1
	POP(BOOL) 	[global+18].0;tanks[0].range.armed
	PUSH(BOOL)	1
	POP(BOOL) 	[global+18].1;tanks[0].range.quiet
	PUSH(USINT)	3
	POP(USINT) 	[global+19];tanks[0].range.tries
	PUSH(INT) 	40
	POP(INT) 	[global+22];tanks[0].history[0]
	PUSH(INT) 	40
	POP(INT) 	[global+24];tanks[0].history[1]
	PUSH(INT) 	45
	POP(INT) 	[global+26];tanks[0].history[2]
	PUSH(REAL)	0.750000
	POP(REAL) 	[global+32];tanks[1].area
	PUSH(INT)	45
	POP(INT) 	[global+36];tanks[1].level
	PUSH(Percent) 	20
	POP(Percent) 	[global+38];tanks[1].range.low
	PUSH(Percent) 	80
	POP(Percent) 	[global+40];tanks[1].range.high
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+42].0;tanks[1].range.armed
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+42].1;tanks[1].range.quiet
	PUSH(USINT) 	3
	POP(USINT) 	[global+43];tanks[1].range.tries
	PUSH(BOOL)	1
	POP(BOOL) 	[global+44].0;tanks[1].inlet
	PUSH(INT) 	40
	POP(INT) 	[global+46];tanks[1].history[0]
	PUSH(INT) 	40
	POP(INT) 	[global+48];tanks[1].history[1]
	PUSH(INT) 	45
	POP(INT) 	[global+50];tanks[1].history[2]
	PUSH(Percent) 	10
	POP(Percent) 	[global+54];setpoints[0]
	PUSH(Percent) 	30
	POP(Percent) 	[global+56];setpoints[1]
	PUSH(Percent) 	30
	POP(Percent) 	[global+58];setpoints[2]
	PUSH(Percent) 	60
	POP(Percent) 	[global+60];setpoints[3]
	PUSH(Percent) 	20
	POP(Percent) 	[global+62];limits.low
	PUSH(Percent) 	80
	POP(Percent) 	[global+64];limits.high
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+66].0;limits.armed
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+66].1;limits.quiet
	PUSH(USINT) 	3
	POP(USINT) 	[global+67];limits.tries
	PUSH	(BOOL)	1
	POP	(BOOL) [2000].3 ; pump
	PUSH	(INT)	1200
	POP	(INT) [2002] ; speed
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+68].0;alarms[0]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+68].1;alarms[1]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+69].1;alarms[9]
	PUSH	(REAL)	0.625000
	POP	(REAL) [global+72] ; ratio
	PUSH	(DWORD)	-1
	POP	(DWORD) [global+76] ; mask
	PUSH	(INT)	50
	POP	(INT) [global+80] ; mode

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------
		;Variable (0): pumped (UDINT,VAR_GLOBAL)
		;Variable (4): starts (INT[],VAR_GLOBAL)
		;Variable (8): total (REAL,VAR_GLOBAL)
		;Variable (12): tripped (BOOL,VAR_GLOBAL)
	PUSH	(UDINT)	1000
	POP	(UDINT) [retain+0] ; pumped
	PUSH(INT) 	1
	POP(INT) 	[retain+4];starts[0]

	RTS
