
DBI FILENAME second.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION_BLOCK: Band,	 file globals.st,	 line 2
; ----------------------------------------------------------------------
FUNCTION_Band:


	DBI POU_BEGIN

	LOCALDATA 20
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;value

	DUP(UDINT)
	PUSH(UDINT)	2
	ADD(UDINT)
	POP(UDINT)[local+8]	;low

	DUP(UDINT)
	PUSH(UDINT)	4
	ADD(UDINT)
	POP(UDINT)[local+12]	;high

	DUP(UDINT)
	PUSH(UDINT)	6	;0x00000006
	ADD(UDINT)
	POP(UDINT)[local+16]	;inside

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 9
	;and
	PUSH*(INT) [local+4]	;value
	PUSH*(INT) [local+8]	;low
	CMP GE(INT)
	DUP(BOOL)
	JNC LABEL0001
	POP(BOOL)
	PUSH*(INT) [local+4]	;value
	PUSH*(INT) [local+12]	;high
	CMP LE(INT)
	LABEL0001:

	POP*(BOOL) [local+16]	;inside


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Note,	 file globals.st,	 line 43
; ----------------------------------------------------------------------
FUNCTION_Note:


	DBI POU_BEGIN

	LOCALDATA 2
		;Variable (0): code ((INT),VAR_INPUT)

	;Read input parameters
	POP(INT) [local+0] ; code

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 47
	;if
	PUSH(INT)	[local+0]	;code
	PUSH(INT)	0
	CMP LE(INT)
	JNC LABEL0002
	;then
DBI FILE 0 LINE 48
	JMP LABEL0003
	LABEL0002:

DBI FILE 0 LINE 50
	PUSH(UDINT)	[global+20]	;events
	PUSH(UDINT)	1
	ADD(UDINT)
	POP(UDINT)	[global+20]	;events
DBI FILE 0 LINE 51
	PUSH(BOOL)	1
	;runtime array address
	PUSH&(BOOL)[global+12].0	;&flags[0]
	PUSH(INT)	[local+0]	;code
	ADDRESSBIT(INT) 1 0 9
	POPI(BOOL)

	;Return value
	LABEL0003:
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Average,	 file globals.st,	 line 54
; ----------------------------------------------------------------------
FUNCTION_Average:


	DBI POU_BEGIN

	LOCALDATA 12
		;Variable (0): Average ((INT),VAR)
		;Variable (2): row ((UDINT),VAR_INPUT)
		;Variable (8): sum ((INT),VAR)
		;Variable (10): j ((INT),VAR)

	;Read input parameters
	PUSH&(UDINT) [local+2] ; row
	MEMCPY 6

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 61
	PUSH(INT)	0
	POP(INT)	[local+8]	;sum
DBI FILE 0 LINE 62
	;for
	PUSH(DINT)	1
	POP(INT)	[local+10]	;j
	LABEL0004:
DBI FILE 0 LINE 63
	PUSH(INT)	[local+8]	;sum
	;runtime array address
	PUSH&(INT)[local+2]	;&row[0]
	PUSH(INT)	[local+10]	;j
	ADDRESS(INT) 2 1 3
	PUSHI(INT)
	ADD(INT)
	POP(INT)	[local+8]	;sum
	PUSH(INT)	[local+10]	;j
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+10]	;j
	PUSH(INT)	[local+10]	;j
	PUSH(DINT)	3
	CMP LE(INT)
	JC LABEL0004
	LABEL0005:

DBI FILE 0 LINE 65
	PUSH(INT)	[local+8]	;sum
	PUSH(INT)	3
	DIV(INT)
	POP(INT)	[local+0]	;Average

	;Return value
	PUSH	(INT) [local+0] ; Average
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Swap,	 file globals.st,	 line 68
; ----------------------------------------------------------------------
FUNCTION_Swap:


	DBI POU_BEGIN

	LOCALDATA 14
		;Variable (0): Swap ((BOOL),VAR)
		;Variable (4): left ((INT),VAR_IN_OUT)
		;Variable (8): right ((INT),VAR_IN_OUT)
		;Variable (12): keep ((INT),VAR)

	;Read input parameters
	POP(UDINT)	[local+8]	;right
	POP(UDINT)	[local+4]	;left

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 75
	PUSH*(INT)	[local+4]	;left
	POP(INT)	[local+12]	;keep
DBI FILE 0 LINE 76
	PUSH*(INT)	[local+8]	;right
	POP*(INT)	[local+4]	;left
DBI FILE 0 LINE 77
	PUSH(INT)	[local+12]	;keep
	POP*(INT)	[local+8]	;right
DBI FILE 0 LINE 78
	PUSH*(INT)	[local+4]	;left
	PUSH*(INT)	[local+8]	;right
	CMP LT(INT)
	POP(BOOL)	[local+0].0	;Swap

	;Return value
	PUSH	(BOOL) [local+0].0 ; Swap
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Swap__1,	 file globals.st,	 line 81
; ----------------------------------------------------------------------
FUNCTION_Swap__1:


	DBI POU_BEGIN

	LOCALDATA 12
		;Variable (0): Swap ((BOOL),VAR)
		;Variable (4): left ((BOOL),VAR_IN_OUT)
		;Variable (8): right ((BOOL),VAR_IN_OUT)

	;Read input parameters
	POP(UDINT)	[local+8]	;right
	POP(UDINT)	[local+4]	;left

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 85
	PUSH*(BOOL)	[local+4].1	;left
	PUSH*(BOOL)	[local+8].0	;right
	XOR(BOOL)
	POP*(BOOL)	[local+4].1	;left
DBI FILE 0 LINE 86
	PUSH*(BOOL)	[local+4].1	;left
	PUSH*(BOOL)	[local+8].0	;right
	XOR(BOOL)
	POP*(BOOL)	[local+8].0	;right
DBI FILE 0 LINE 87
	PUSH*(BOOL)	[local+4].1	;left
	PUSH*(BOOL)	[local+8].0	;right
	XOR(BOOL)
	POP*(BOOL)	[local+4].1	;left
DBI FILE 0 LINE 88
	PUSH*(BOOL)	[local+4].1	;left
	POP(BOOL)	[local+0].0	;Swap

	;Return value
	PUSH	(BOOL) [local+0].0 ; Swap
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Spread,	 file globals.st,	 line 91
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_Spread:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 6
;;			;Variable (0): Spread ((INT),VAR)
;;			;Variable (2): a ((INT),VAR_INPUT)
;;			;Variable (4): b ((INT),VAR_INPUT)
;;	
;;		;Read input parameters
;;		POP(INT) [local+4] ; b
;;		POP(INT) [local+2] ; a
;;	
;;		;Local variable initialization
;;	
;;		;Function body
;;	DBI FILE 0 LINE 95
;;		PUSH(INT)	[local+2]	;a
;;		PUSH(INT)	[local+4]	;b
;;		SUB(INT)
;;		ABS(INT)
;;		POP(INT)	[local+0]	;Spread
;;	
;;		;Return value
;;		PUSH	(INT) [local+0] ; Spread
;;		RTS
;;	
;;		DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 1
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 8 bytes size

	; Initialization test
	PUSH (INT) [local+6] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0006
	;Local variable initialization
	PUSH	(BOOL)	1
	POP	(BOOL) [local+4].0 ; rising

	PUSH (INT) 1234 
	POP (INT) [local+6] ; __ProgramInit
	LABEL0006:

	;Program body
DBI FILE 1 LINE 10
	;for
	PUSH(DINT)	1
	POP(INT)	[local+0]	;i
	LABEL0007:
DBI FILE 1 LINE 11
	;runtime array address
	PUSH&(INT)[global+0]	;&trend[0][0]
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	1
	ADD(INT)
	ADDRESS(INT) 2 1 3
	PUSHI(INT)
	;runtime array address
	PUSH&(INT)[global+0]	;&trend[0][0]
	PUSH(INT)	[local+0]	;i
	ADDRESS(INT) 2 1 3
	POPI(INT)
	PUSH(INT)	[local+0]	;i
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;i
	PUSH(INT)	[local+0]	;i
	PUSH(DINT)	2
	CMP LE(INT)
	JC LABEL0007
	LABEL0008:

DBI FILE 1 LINE 13
	PUSH(INT)	[1000]	;level
	POP(INT)	[global+4]	;trend[0][2]
DBI FILE 1 LINE 14
	PUSH&(UDINT)	[global+0]	;trend[0]
	JSR FUNCTION_Average
	POP(INT)	[local+2]	;mean
DBI FILE 1 LINE 15
	PUSH&(INT)	[global+6]	;trend[1][0]
	PUSH&(INT)	[local+2]	;mean
	JSR FUNCTION_Swap
	POP(BOOL)	[local+4].0	;rising
DBI FILE 1 LINE 16
	;case
	PUSH(INT)	[local+2]	;mean
	PUSH(INT)	100
	DIV(INT)
	CASE (INT) -1 LABEL0010
	CASE (INT) 0 LABEL0010
	CASER (INT) 1  8 LABEL0011
	POP(INT)
DBI FILE 1 LINE 20
	PUSH(BOOL)	0
	POP(BOOL)	[global+14].0	;request
DBI FILE 1 LINE 21
	PUSH(INT)	2
	JSR FUNCTION_Note
	JMP LABEL0009
	LABEL0010:
DBI FILE 1 LINE 17
	PUSH(BOOL)	1
	POP(BOOL)	[global+14].0	;request
DBI FILE 1 LINE 17
	PUSH(INT)	[global+16]	;demand
	PUSH(INT)	5
	ADD(INT)
	POP(INT)	[global+16]	;demand
	JMP LABEL0009
	LABEL0011:
DBI FILE 1 LINE 18
	PUSH(INT)	[1000]	;level
	PUSH(INT)	[global+16]	;demand
	CMP LT(INT)
	POP(BOOL)	[global+14].0	;request
	LABEL0009:

DBI FILE 1 LINE 23
	;if
	;or
	PUSH(INT)	[local+2]	;mean
	PUSH(INT)	900
	CMP GT(INT)
	DUP(BOOL)
	JC LABEL0013
	POP(BOOL)
	PUSH(INT)	[local+2]	;mean
	PUSH(INT)	100
	CMP LT(INT)
	LABEL0013:

	JNC LABEL0012
	;then
DBI FILE 1 LINE 24
	PUSH&(BOOL)	[global+14].0	;request
	PUSH&(BOOL)	[global+14].1	;refused
	JSR FUNCTION_Swap__1
	POP(BOOL)
	LABEL0012:

DBI FILE 1 LINE 26
	PUSH(INT)	[local+2]	;mean
	TO_REAL (INT)

	PUSH(REAL)	[global+24]	;ratio
	DIV(REAL)
	PUSH(REAL)	0.500000
	ADD(REAL)
	POP(REAL)	[global+24]	;ratio

	
	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: second,	 file second.st,	 line 1
; ----------------------------------------------------------------------
PROGRAM_second:


	DBI POU_BEGIN

	NOP ; begin
	NOP
	LOCALSET 2 ; 20 bytes size
	;Call to global variable initialization
	JSR FUNCTION___GlobalInitialization__

	;Call to retain variable initialization
	JSR FUNCTION___RetainInitialization__


	; Initialization test
	PUSH (INT) [local+6] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0014
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+6] ; __ProgramInit
	LABEL0014:

	;Program body
DBI FILE 2 LINE 9
	;if
	PUSH(BOOL)	[retain+12].0	;locked
	JNC LABEL0015
	;then
DBI FILE 2 LINE 10
	PUSH(BOOL)	0
	POP(BOOL)	[2004].0	;pumpOn
DBI FILE 2 LINE 11
	JMP LABEL0016
	LABEL0015:

DBI FILE 2 LINE 13
	;and
	PUSH(BOOL)	[global+14].0	;request
	DUP(BOOL)
	JNC LABEL0017
	POP(BOOL)
	PUSH(BOOL)	[global+14].1	;refused
	NOT(BOOL)
	LABEL0017:

	POP(BOOL)	[2004].0	;pumpOn
DBI FILE 2 LINE 14
	PUSH(INT)	[1000]	;level
	POP(INT)	[global+28]	;guard.value
	PUSH(INT)	100
	POP(INT)	[global+30]	;guard.low
	PUSH(INT)	900
	POP(INT)	[global+32]	;guard.high
	PUSH&(UDINT)	[global+28]	;guard
	JSR FUNCTION_Band

DBI FILE 2 LINE 15
	PUSH(BOOL)	[global+34].0	;guard.inside
	POP(BOOL)	[2004].1	;valveOn
DBI FILE 2 LINE 16
	PUSH(INT)	0
	POP(INT)	[local+0]	;k
DBI FILE 2 LINE 17
	;while
	LABEL0018:
	PUSH(INT)	[local+0]	;k
	PUSH(INT)	10
	CMP LT(INT)
	JNC LABEL0019
DBI FILE 2 LINE 18
	;if
	;runtime array address
	PUSH&(BOOL)[global+12].0	;&flags[0]
	PUSH(INT)	[local+0]	;k
	ADDRESSBIT(INT) 1 0 9
	PUSHI(BOOL)
	JNC LABEL0020
	;then
DBI FILE 2 LINE 19
	;or
	PUSH(WORD)	[local+4]	;mask
	PUSH(INT)	1
	SHL(WORD)
	PUSH(WORD)	1
	OR(WORD)

	POP(WORD)	[local+4]	;mask
	JMP LABEL0021
	LABEL0020:
	;else
DBI FILE 2 LINE 21
	PUSH(WORD)	[local+4]	;mask
	PUSH(INT)	[local+0]	;k
	SHR(WORD)
	POP(WORD)	[local+4]	;mask
	LABEL0021:
DBI FILE 2 LINE 23
	PUSH(INT)	[local+0]	;k
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+0]	;k
DBI FILE 2 LINE 24
	;if
	PUSH(WORD)	[local+4]	;mask
	PUSH(WORD)	[global+36]	;pattern
	CMP EQ(WORD)
	JNC LABEL0022
	;then
DBI FILE 2 LINE 24
	JMP LABEL0019

	LABEL0022:

	JMP LABEL0018
	LABEL0019:

DBI FILE 2 LINE 26
	PUSH(INT)	[global+16]	;demand
	PUSH(INT)	3
	PUSH(INT)	4
	MULDIV(INT)
	POP(INT)	[local+2]	;step
DBI FILE 2 LINE 27
	;repeat
	LABEL0023:
DBI FILE 2 LINE 28
	PUSH(INT)	[local+2]	;step
	PUSH(INT)	1
	PUSH(INT)	[global+16]	;demand
	PUSH(INT)	10
	DIV(INT)
	MAX(INT)

	ADD(INT)
	POP(INT)	[local+2]	;step
	PUSH(INT)	[local+2]	;step
	PUSH(INT)	[global+16]	;demand
	CMP GE(INT)
	JNC LABEL0023
	LABEL0024:

DBI FILE 2 LINE 30
	;for
	PUSH(INT)	[local+2]	;step
	POP(INT)	[local+0]	;k
	LABEL0025:
	PUSH(INT)	[local+0]	;k
	PUSH(INT)	[global+16]	;demand
	CMP GT(INT)
	JC LABEL0026
DBI FILE 2 LINE 31
	PUSH(UDINT)	[retain+4]	;hours[1]
	PUSH(UDINT)	[retain+8]	;runs
	ADD(UDINT)
	POP(UDINT)	[retain+4]	;hours[1]
	PUSH(INT)	[local+0]	;k
	PUSH(INT)	5
	ADD(INT)
	POP(INT)	[local+0]	;k
	JMP LABEL0025
	LABEL0026:

DBI FILE 2 LINE 33
	PUSH(UDINT)	[retain+8]	;runs
	PUSH(UDINT)	1
	ADD(UDINT)
	POP(UDINT)	[retain+8]	;runs
DBI FILE 2 LINE 34
	PUSH(UDINT)	[retain+16]	;laps
	PUSH(UDINT)	[retain+8]	;runs
	ADD(UDINT)
	POP(UDINT)	[retain+16]	;laps
DBI FILE 2 LINE 35
	PUSH(INT)	[local+0]	;k
	JSR FUNCTION_Note
DBI FILE 2 LINE 36
	SYS 3

		LABEL0016:

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
		;Variable (1000): level (INT,VAR_GLOBAL AT IW0)
		;Variable (2004): pumpOn (BOOL,VAR_GLOBAL AT QX4.0)
		;Variable (2004): valveOn (BOOL,VAR_GLOBAL AT QX4.1)
		;Variable (0): trend (INT[][],VAR_GLOBAL)
		;Variable (12): flags (BOOL[],VAR_GLOBAL)
		;Variable (14): request (BOOL,VAR_GLOBAL)
		;Variable (14): refused (BOOL,VAR_GLOBAL)
		;Variable (16): demand (INT,VAR_GLOBAL)
		;Variable (20): events (UDINT,VAR_GLOBAL)
		;Variable (24): ratio (REAL,VAR_GLOBAL)
		;Variable (28): guard (Band,VAR_GLOBAL)
		;Variable (36): pattern (WORD,VAR_GLOBAL)
	PUSH(INT) 	10
	POP(INT) 	[global+0];trend[0][0]
	PUSH(INT) 	20
	POP(INT) 	[global+2];trend[0][1]
	PUSH(INT) 	30
	POP(INT) 	[global+4];trend[0][2]
	PUSH(INT) 	1
	POP(INT) 	[global+6];trend[1][0]
	PUSH(INT) 	2
	POP(INT) 	[global+8];trend[1][1]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+12].0;flags[0]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+12].1;flags[1]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+12].2;flags[2]
	PUSH	(INT)	40
	POP	(INT) [global+16] ; demand
	PUSH	(UDINT)	3
	POP	(UDINT) [global+20] ; events
	PUSH	(REAL)	1.500000
	POP	(REAL) [global+24] ; ratio
	PUSH	(WORD)	32769
	POP	(WORD) [global+36] ; pattern

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------
		;Variable (0): hours (UDINT[],VAR_GLOBAL)
		;Variable (8): runs (UDINT,VAR_GLOBAL)
		;Variable (12): locked (BOOL,VAR_GLOBAL)
	PUSH(UDINT) 	1000
	POP(UDINT) 	[retain+0];hours[0]
	PUSH(UDINT) 	1000
	POP(UDINT) 	[retain+4];hours[1]
	PUSH	(UDINT)	3
	POP	(UDINT) [retain+8] ; runs
	PUSH	(BOOL)	1
	POP	(BOOL) [retain+12].0 ; locked

	RTS
