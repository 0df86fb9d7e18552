
DBI FILENAME pid.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: Scale,	 file pid.st,	 line 10
; ----------------------------------------------------------------------
FUNCTION_Scale:


	DBI POU_BEGIN

	LOCALDATA 16
		;Variable (0): Scale ((REAL),VAR)
		;Variable (4): raw ((INT),VAR_INPUT)
		;Variable (8): low ((REAL),VAR_INPUT)
		;Variable (12): high ((REAL),VAR_INPUT)

	;Read input parameters
	POP(REAL) [local+12] ; high
	POP(REAL) [local+8] ; low
	POP(INT) [local+4] ; raw

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 15
	PUSH(REAL)	[local+8]	;low
	PUSH(INT)	[local+4]	;raw
	TO_REAL (INT)

	PUSH(REAL)	[local+12]	;high
	PUSH(REAL)	[local+8]	;low
	SUB(REAL)
	MUL(REAL)
	PUSH(REAL)	27648.000000
	DIV(REAL)
	ADD(REAL)
	POP(REAL)	[local+0]	;Scale

	;Return value
	PUSH	(REAL) [local+0] ; Scale
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: Pid,	 file pid.st,	 line 18
; ----------------------------------------------------------------------
FUNCTION_Pid:


	DBI POU_BEGIN

	LOCALDATA 76
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;enable

	DUP(UDINT)
	PUSH(UDINT)	16777216	;0x01000000
	ADD(UDINT)
	POP(UDINT)[local+8]	;reset

	DUP(UDINT)
	PUSH(UDINT)	4
	ADD(UDINT)
	POP(UDINT)[local+12]	;target

	DUP(UDINT)
	PUSH(UDINT)	8
	ADD(UDINT)
	POP(UDINT)[local+16]	;actual

	DUP(UDINT)
	PUSH(UDINT)	12
	ADD(UDINT)
	POP(UDINT)[local+20]	;kp

	DUP(UDINT)
	PUSH(UDINT)	16
	ADD(UDINT)
	POP(UDINT)[local+24]	;ki

	DUP(UDINT)
	PUSH(UDINT)	20
	ADD(UDINT)
	POP(UDINT)[local+28]	;kd

	DUP(UDINT)
	PUSH(UDINT)	24
	ADD(UDINT)
	POP(UDINT)[local+32]	;output

	DUP(UDINT)
	PUSH(UDINT)	28	;0x0000001C
	ADD(UDINT)
	POP(UDINT)[local+36]	;saturated

	DUP(UDINT)
	PUSH(UDINT)	32
	ADD(UDINT)
	PUSHI(UDINT)
	POP(UDINT)[local+40]	;steps

	DUP(UDINT)
	PUSH(UDINT)	36
	ADD(UDINT)
	POP(UDINT)[local+44]	;sum

	DUP(UDINT)
	PUSH(UDINT)	40
	ADD(UDINT)
	POP(UDINT)[local+48]	;lastError

	DUP(UDINT)
	PUSH(UDINT)	44
	ADD(UDINT)
	POP(UDINT)[local+52]	;error

	DUP(UDINT)
	PUSH(UDINT)	48
	ADD(UDINT)
	POP(UDINT)[local+56]	;raw

	DUP(UDINT)
	PUSH(UDINT)	52
	ADD(UDINT)
	POP(UDINT)[local+60]	;history

	DUP(UDINT)
	PUSH(UDINT)	68
	ADD(UDINT)
	POP(UDINT)[local+64]	;k

	DUP(UDINT)
	PUSH(UDINT)	72
	ADD(UDINT)
	POP(UDINT)[local+72]	;TOP

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 41
	;if
	PUSH*(BOOL) [local+8]	;reset
	JNC LABEL0001
	;then
DBI FILE 0 LINE 42
	PUSH(REAL)	0.000000
	POP*(REAL) [local+44]	;sum
DBI FILE 0 LINE 43
	PUSH(REAL)	0.000000
	POP*(REAL) [local+48]	;lastError
DBI FILE 0 LINE 44
	;for
	PUSH(DINT)	0
	POP*(INT) [local+64]	;k
	LABEL0002:
DBI FILE 0 LINE 45
	PUSH(REAL)	0.000000
	PUSH(UDINT) [local+60]	;&history
	;runtime array address
	PUSH*(INT) [local+64]	;k
	ADDRESS(INT) 4 0 3
	POPI(REAL)
	PUSH*(INT) [local+64]	;k
	PUSH(INT)	1
	ADD(INT)
	POP*(INT) [local+64]	;k
	PUSH*(INT) [local+64]	;k
	PUSH(DINT)	3
	CMP LE(INT)
	JC LABEL0002
	LABEL0003:

	LABEL0001:

DBI FILE 0 LINE 48
	;if
	PUSH*(BOOL) [local+4]	;enable
	NOT(BOOL)
	JNC LABEL0004
	;then
DBI FILE 0 LINE 49
	PUSH(REAL)	0.000000
	POP*(REAL) [local+32]	;output
DBI FILE 0 LINE 50
	PUSH(BOOL)	0
	POP*(BOOL) [local+36]	;saturated
DBI FILE 0 LINE 51
	JMP LABEL0005
	LABEL0004:

DBI FILE 0 LINE 53
	PUSH*(REAL) [local+12]	;target
	PUSH*(REAL) [local+16]	;actual
	SUB(REAL)
	POP*(REAL) [local+52]	;error
DBI FILE 0 LINE 54
	PUSH(REAL)	-50.000000
	PUSH*(REAL) [local+44]	;sum
	PUSH*(REAL) [local+24]	;ki
	PUSH*(REAL) [local+52]	;error
	MUL(REAL)
	ADD(REAL)
	MAX(REAL)
	PUSH(REAL)	50.000000
	MIN(REAL)
	POP*(REAL) [local+44]	;sum
DBI FILE 0 LINE 55
	;for
	PUSH(DINT)	3
	POP*(INT) [local+64]	;k
	LABEL0006:
DBI FILE 0 LINE 56
	PUSH(UDINT) [local+60]	;&history
	;runtime array address
	PUSH*(INT) [local+64]	;k
	PUSH(INT)	1
	SUB(INT)
	ADDRESS(INT) 4 0 3
	PUSHI(REAL)
	PUSH(UDINT) [local+60]	;&history
	;runtime array address
	PUSH*(INT) [local+64]	;k
	ADDRESS(INT) 4 0 3
	POPI(REAL)
	PUSH*(INT) [local+64]	;k
	PUSH(INT)	-1
	ADD(INT)
	POP*(INT) [local+64]	;k
	PUSH*(INT) [local+64]	;k
	PUSH(DINT)	1
	CMP GE(INT)
	JC LABEL0006
	LABEL0007:

DBI FILE 0 LINE 58
	PUSH*(REAL) [local+52]	;error
	PUSH(UDINT) [local+60]	;&history
	POPI(REAL)
DBI FILE 0 LINE 59
	PUSH*(REAL) [local+20]	;kp
	PUSH*(REAL) [local+52]	;error
	MUL(REAL)
	PUSH*(REAL) [local+44]	;sum
	ADD(REAL)
	PUSH*(REAL) [local+28]	;kd
	PUSH*(REAL) [local+52]	;error
	PUSH*(REAL) [local+48]	;lastError
	SUB(REAL)
	MUL(REAL)
	ADD(REAL)
	POP*(REAL) [local+56]	;raw
DBI FILE 0 LINE 60
	;if
	PUSH*(REAL) [local+56]	;raw
	PUSH(REAL)	100.000000
	CMP GT(REAL)
	JNC LABEL0008
	;then
DBI FILE 0 LINE 61
	PUSH(REAL)	100.000000
	POP*(REAL) [local+32]	;output
DBI FILE 0 LINE 61
	PUSH(BOOL)	1
	POP*(BOOL) [local+36]	;saturated
	JMP LABEL0009
	LABEL0008:
	PUSH*(REAL) [local+56]	;raw
	PUSH(REAL)	0.000000
	CMP LT(REAL)
	JNC LABEL0010
DBI FILE 0 LINE 63
	PUSH(REAL)	0.000000
	POP*(REAL) [local+32]	;output
DBI FILE 0 LINE 63
	PUSH(BOOL)	1
	POP*(BOOL) [local+36]	;saturated
	JMP LABEL0009
	;else
	LABEL0010:
DBI FILE 0 LINE 65
	PUSH*(REAL) [local+56]	;raw
	POP*(REAL) [local+32]	;output
DBI FILE 0 LINE 65
	PUSH(BOOL)	0
	POP*(BOOL) [local+36]	;saturated
	LABEL0009:
DBI FILE 0 LINE 67
	PUSH*(REAL) [local+52]	;error
	POP*(REAL) [local+48]	;lastError
DBI FILE 0 LINE 68
	PUSH*(DINT) [local+40]	;steps
	PUSH(DINT)	1
	ADD(DINT)
	POP*(DINT) [local+40]	;steps

		LABEL0005:


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: Blink,	 file pid.st,	 line 71
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_Blink:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 8
;;		;Read input parameter
;;		DUP(UDINT)
;;		POP(UDINT)[local+0]	;FB_INSTANCE
;;	
;;		POP(UDINT)[local+4]	;lamp
;;	
;;		POP(UDINT)
;;	
;;	
;;		;FunctionBlock body
;;	DBI FILE 0 LINE 75
;;		PUSH*(BOOL) [local+4]	;lamp
;;		NOT(BOOL)
;;		POP*(BOOL) [local+4]	;lamp
;;	
;;	
;;		RTS
;;		DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file pid.st,	 line 78
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 178 bytes size

	; Initialization test
	PUSH (INT) [local+176] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0011
	;Local variable initialization
	PUSH(WORD) 	255
	POP(WORD) 	[local+70];heater.spare
	PUSH(REAL) 	100.000000
	POP(REAL) 	[local+72];heater.TOP
	PUSH(WORD) 	255
	POP(WORD) 	[local+146];cooler.spare
	PUSH(REAL) 	100.000000
	POP(REAL) 	[local+148];cooler.TOP

	PUSH (INT) 1234 
	POP (INT) [local+176] ; __ProgramInit
	LABEL0011:

	;Program body
DBI FILE 0 LINE 89
	PUSH(INT)	[1010]	;rawInput
	PUSH(REAL)	0.000000
	PUSH(REAL)	150.000000
	JSR FUNCTION_Scale
	POP(REAL)	[local+160]	;temperature
DBI FILE 0 LINE 90
	PUSH(REAL)	[retain+0]	;peak
	PUSH(REAL)	[local+160]	;temperature
	MAX(REAL)

	POP(REAL)	[retain+0]	;peak
DBI FILE 0 LINE 91
	PUSH(REAL)	[global+0]	;setPoint
	POP(REAL)	[local+168]	;ramp
DBI FILE 0 LINE 92
	;while
	LABEL0012:
	PUSH(REAL)	[local+168]	;ramp
	PUSH(REAL)	80.000000
	CMP GT(REAL)
	JNC LABEL0013
DBI FILE 0 LINE 93
	PUSH(REAL)	[local+168]	;ramp
	PUSH(REAL)	7.500000
	SUB(REAL)
	POP(REAL)	[local+168]	;ramp
DBI FILE 0 LINE 94
	PUSH(DINT)	[local+156]	;guard
	PUSH(DINT)	1
	ADD(DINT)
	POP(DINT)	[local+156]	;guard
DBI FILE 0 LINE 95
	;if
	PUSH(DINT)	[local+156]	;guard
	PUSH(DINT)	1000
	CMP GT(DINT)
	JNC LABEL0014
	;then
DBI FILE 0 LINE 95
	JMP LABEL0013

	LABEL0014:

	JMP LABEL0012
	LABEL0013:

DBI FILE 0 LINE 97
	PUSH(BOOL)	[3004].3	;manual
	NOT(BOOL)
	POP(BOOL)	[local+0].0	;heater.enable
	PUSH(BOOL)	0
	POP(BOOL)	[local+0].1	;heater.reset
	PUSH(REAL)	[local+168]	;ramp
	POP(REAL)	[local+4]	;heater.target
	PUSH(REAL)	[local+160]	;temperature
	POP(REAL)	[local+8]	;heater.actual
	PUSH(REAL)	[global+4]	;gains[0]
	POP(REAL)	[local+12]	;heater.kp
	PUSH(REAL)	[global+8]	;gains[1]
	POP(REAL)	[local+16]	;heater.ki
	PUSH(REAL)	[global+12]	;gains[2]
	POP(REAL)	[local+20]	;heater.kd
	PUSH&(DINT)	[local+152]	;cycles
	POP(UDINT)	[local+32]	;heater.steps
	PUSH&(UDINT)	[local+0]	;heater
	JSR FUNCTION_Pid
	PUSH(REAL)	[local+24]	;heater.output
	POP(REAL)	[local+164]	;drive
	PUSH(BOOL)	[local+28].0	;heater.saturated
	POP(BOOL)	[local+172].0	;full

DBI FILE 0 LINE 100
	PUSH(REAL)	90.000000
	POP(REAL)	[local+80]	;cooler.target
DBI FILE 0 LINE 101
	PUSH(REAL)	[local+160]	;temperature
	POP(REAL)	[local+84]	;cooler.actual
	PUSH(BOOL)	1
	POP(BOOL)	[local+76].0	;cooler.enable
	PUSH&(DINT)	[local+152]	;cycles
	POP(UDINT)	[local+108]	;cooler.steps
	PUSH&(UDINT)	[local+76]	;cooler
	JSR FUNCTION_Pid

DBI FILE 0 LINE 102
	;or
	PUSH(REAL)	[local+164]	;drive
	TO_INT (REAL)

	TO_WORD (INT)

	PUSH(INT)	4
	SHL(WORD)
	PUSH(WORD)	3
	OR(WORD)

	POP(WORD)	[local+174]	;command
DBI FILE 0 LINE 103
	PUSH(REAL)	[local+164]	;drive
	PUSH(INT)	2
	POW(REAL)
	PUSH(REAL)	100.000000
	DIV(REAL)
	POP(REAL)	[local+164]	;drive
DBI FILE 0 LINE 104
	PUSH(INT)	0
	PUSH(REAL)	[local+164]	;drive
	ABS(REAL)
	SQRT(REAL)
	PUSH(REAL)	276.480000
	MUL(REAL)
	TO_INT (REAL)

	MAX(INT)
	PUSH(INT)	27648
	MIN(INT)
	POP(INT)	[2010]	;rawOutput
DBI FILE 0 LINE 105
	;if
	;or
	;and
	PUSH(BOOL)	[local+172].0	;full
	DUP(BOOL)
	JNC LABEL0017
	POP(BOOL)
	PUSH(REAL)	[local+164]	;drive
	PUSH(REAL)	99.000000
	CMP GT(REAL)
	LABEL0017:

	DUP(BOOL)
	JC LABEL0016
	POP(BOOL)
	PUSH(BOOL)	[3004].3	;manual
	LABEL0016:

	JNC LABEL0015
	;then
DBI FILE 0 LINE 106
	PUSH(INT)	27648
	POP(INT)	[2010]	;rawOutput
	JMP LABEL0018
	LABEL0015:
	PUSH(BOOL)	[local+104].0	;cooler.saturated
	JNC LABEL0018
DBI FILE 0 LINE 108
	PUSH(INT)	0
	POP(INT)	[2010]	;rawOutput
	LABEL0018:

	
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
		;Variable (1010): rawInput (INT,VAR_GLOBAL AT IW10)
		;Variable (2010): rawOutput (INT,VAR_GLOBAL AT QW10)
		;Variable (0): setPoint (REAL,VAR_GLOBAL)
		;Variable (4): gains (REAL[],VAR_GLOBAL)
		;Variable (3004): manual (BOOL,VAR_GLOBAL AT MX4.3)
	PUSH	(REAL)	60.000000
	POP	(REAL) [global+0] ; setPoint
	PUSH(REAL) 	2.500000
	POP(REAL) 	[global+4];gains[0]
	PUSH(REAL) 	0.250000
	POP(REAL) 	[global+8];gains[1]
	PUSH(REAL) 	1.000000
	POP(REAL) 	[global+12];gains[2]

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
