
DBI FILENAME conveyor.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: ClassOf,	 file conveyor.st,	 line 29
; ----------------------------------------------------------------------
FUNCTION_ClassOf:


	DBI POU_BEGIN

	LOCALDATA 6
		;Variable (0): ClassOf ((INT),VAR)
		;Variable (2): length ((INT),VAR_INPUT)
		;Variable (4): k ((INT),VAR)

	;Read input parameters
	POP(INT) [local+2] ; length

	;Local variable initialization
	PUSH	(INT)	1
	POP	(INT) [local+4] ; k

	;Function body
DBI FILE 0 LINE 36
	;while
	LABEL0001:
	PUSH(INT)	[local+4]	;k
	PUSH(INT)	2
	CMP LE(INT)
	JNC LABEL0002
DBI FILE 0 LINE 37
	;if
	PUSH(INT)	[local+2]	;length
	;runtime array address
	PUSH&(INT)[global+0]	;&limits[0]
	PUSH(INT)	[local+4]	;k
	ADDRESS(INT) 2 1 2
	PUSHI(INT)
	CMP LT(INT)
	JNC LABEL0003
	;then
DBI FILE 0 LINE 38
	JMP LABEL0002

	LABEL0003:

DBI FILE 0 LINE 40
	PUSH(INT)	[local+4]	;k
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+4]	;k
	JMP LABEL0001
	LABEL0002:

DBI FILE 0 LINE 42
	PUSH(INT)	[local+4]	;k
	POP(INT)	[local+0]	;ClassOf

	;Return value
	PUSH	(INT) [local+0] ; ClassOf
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Clip,	 file conveyor.st,	 line 45
; ----------------------------------------------------------------------
FUNCTION_Clip:


	DBI POU_BEGIN

	LOCALDATA 6
		;Variable (0): Clip ((INT),VAR)
		;Variable (2): value ((INT),VAR_INPUT)
		;Variable (4): top ((INT),VAR_INPUT)

	;Read input parameters
	POP(INT) [local+4] ; top
	POP(INT) [local+2] ; value

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 49
	;if
	PUSH(INT)	[local+2]	;value
	PUSH(INT)	[local+4]	;top
	CMP GT(INT)
	JNC LABEL0004
	;then
DBI FILE 0 LINE 50
	PUSH(INT)	[local+4]	;top
	POP(INT)	[local+0]	;Clip
DBI FILE 0 LINE 51
	JMP LABEL0005
	LABEL0004:

DBI FILE 0 LINE 53
	PUSH(INT)	[local+2]	;value
	POP(INT)	[local+0]	;Clip

	;Return value
	LABEL0005:
	PUSH	(INT) [local+0] ; Clip
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Clip__1,	 file conveyor.st,	 line 56
; ----------------------------------------------------------------------
FUNCTION_Clip__1:


	DBI POU_BEGIN

	LOCALDATA 12
		;Variable (0): Clip ((DINT),VAR)
		;Variable (4): value ((DINT),VAR_INPUT)
		;Variable (8): top ((DINT),VAR_INPUT)

	;Read input parameters
	POP(DINT) [local+8] ; top
	POP(DINT) [local+4] ; value

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 60
	PUSH(DINT)	[local+4]	;value
	PUSH(DINT)	[local+8]	;top
	MIN(DINT)

	POP(DINT)	[local+0]	;Clip

	;Return value
	PUSH	(DINT) [local+0] ; Clip
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Mirror,	 file conveyor.st,	 line 63
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_Mirror:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 1
;;			;Variable (0): Mirror ((BOOL),VAR)
;;			;Variable (0): flag ((BOOL),VAR_INPUT)
;;	
;;		;Read input parameters
;;		POP(BOOL) [local+0].1 ; flag
;;	
;;		;Local variable initialization
;;	
;;		;Function body
;;	DBI FILE 0 LINE 67
;;		PUSH(BOOL)	[local+0].1	;flag
;;		NOT(BOOL)
;;		POP(BOOL)	[local+0].0	;Mirror
;;	
;;		;Return value
;;		PUSH	(BOOL) [local+0].0 ; Mirror
;;		RTS
;;	
;;		DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file conveyor.st,	 line 70
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 52 bytes size

	; Initialization test
	PUSH (INT) [local+50] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0006
	;Local variable initialization
	PUSH(SINT) 	1
	POP(SINT) 	[local+26];grid[0]
	PUSH(SINT) 	2
	POP(SINT) 	[local+27];grid[1]
	PUSH(SINT) 	2
	POP(SINT) 	[local+28];grid[2]
	PUSH(SINT) 	3
	POP(SINT) 	[local+29];grid[3]
	PUSH	(BOOL)	1
	POP	(BOOL) [local+48].1 ; ready

	PUSH (INT) 1234 
	POP (INT) [local+50] ; __ProgramInit
	LABEL0006:

	;Program body
DBI FILE 0 LINE 86
	;if
	PUSH(BOOL)	[1000].1	;stopButton
	JNC LABEL0007
	;then
DBI FILE 0 LINE 87
	PUSH(BOOL)	0
	POP(BOOL)	[2000].0	;motor
DBI FILE 0 LINE 88
	PUSH(INT)	0
	POP(INT)	[2002]	;speed
DBI FILE 0 LINE 89
	JMP LABEL0008
	LABEL0007:

DBI FILE 0 LINE 91
	;and
	PUSH(BOOL)	[local+48].1	;ready
	DUP(BOOL)
	JNC LABEL0009
	POP(BOOL)
	PUSH(BOOL)	[global+5].0	;alarm
	NOT(BOOL)
	LABEL0009:

	POP(BOOL)	[2000].0	;motor
DBI FILE 0 LINE 92
	;if
	;and
	PUSH(BOOL)	[1000].2	;eye
	DUP(BOOL)
	JNC LABEL0011
	POP(BOOL)
	PUSH(BOOL)	[local+48].0	;lastEye
	NOT(BOOL)
	LABEL0011:

	JNC LABEL0010
	;then
DBI FILE 0 LINE 93
	PUSH(INT)	-1
	POP(INT)	[local+34]	;free
DBI FILE 0 LINE 94
	;for
	PUSH(DINT)	0
	POP(INT)	[local+32]	;i
	LABEL0012:
DBI FILE 0 LINE 95
	;if
	;runtime array address
	PUSH&(BOOL)[local+24].0	;&busy[0]
	PUSH(INT)	[local+32]	;i
	ADDRESSBIT(INT) 1 0 11
	PUSHI(BOOL)
	NOT(BOOL)
	JNC LABEL0014
	;then
DBI FILE 0 LINE 96
	PUSH(INT)	[local+32]	;i
	POP(INT)	[local+34]	;free
DBI FILE 0 LINE 97
	JMP LABEL0013

	LABEL0014:

	PUSH(INT)	[local+32]	;i
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+32]	;i
	PUSH(INT)	[local+32]	;i
	PUSH(DINT)	11
	CMP LE(INT)
	JC LABEL0012
	LABEL0013:

DBI FILE 0 LINE 100
	;if
	PUSH(INT)	[local+34]	;free
	PUSH(INT)	0
	CMP GE(INT)
	JNC LABEL0015
	;then
DBI FILE 0 LINE 101
	PUSH(INT)	[1002]	;partLength
	JSR FUNCTION_ClassOf
	;runtime array address
	PUSH&(INT)[local+0]	;&slot[0]
	PUSH(INT)	[local+34]	;free
	ADDRESS(INT) 2 0 11
	POPI(INT)
DBI FILE 0 LINE 102
	PUSH(BOOL)	1
	;runtime array address
	PUSH&(BOOL)[local+24].0	;&busy[0]
	PUSH(INT)	[local+34]	;free
	ADDRESSBIT(INT) 1 0 11
	POPI(BOOL)
	JMP LABEL0016
	LABEL0015:
	;else
DBI FILE 0 LINE 104
	PUSH(BOOL)	1
	POP(BOOL)	[global+5].0	;alarm
	LABEL0016:
	LABEL0010:

DBI FILE 0 LINE 107
	PUSH(BOOL)	[1000].2	;eye
	POP(BOOL)	[local+48].0	;lastEye
DBI FILE 0 LINE 108
	;case
	PUSH(INT)	[local+22]	;slot[11]
	CASE (INT) 1 LABEL0018
	CASE (INT) 2 LABEL0019
	CASER (INT) 3  9 LABEL0020
	CASE (INT) 12 LABEL0020
	POP(INT)
DBI FILE 0 LINE 114
	PUSH(BYTE)	0
	POP(BYTE)	[2001]	;gates
	JMP LABEL0017
	LABEL0018:
DBI FILE 0 LINE 109
	PUSH(BYTE)	1
	POP(BYTE)	[2001]	;gates
DBI FILE 0 LINE 109
	PUSH(DINT)	[retain+0]	;sorted[0]
	PUSH(DINT)	1
	ADD(DINT)
	POP(DINT)	[retain+0]	;sorted[0]
	JMP LABEL0017
	LABEL0019:
DBI FILE 0 LINE 110
	PUSH(BYTE)	2
	POP(BYTE)	[2001]	;gates
DBI FILE 0 LINE 110
	PUSH(DINT)	[retain+4]	;sorted[1]
	PUSH(DINT)	1
	ADD(DINT)
	POP(DINT)	[retain+4]	;sorted[1]
	JMP LABEL0017
	LABEL0020:
DBI FILE 0 LINE 111
	;or
	PUSH(BYTE)	[2001]	;gates
	PUSH(INT)	4
	SHL(BYTE)
	PUSH(BYTE)	128
	OR(BYTE)

	POP(BYTE)	[2001]	;gates
DBI FILE 0 LINE 112
	PUSH(DINT)	[retain+8]	;sorted[2]
	PUSH(DINT)	1
	ADD(DINT)
	POP(DINT)	[retain+8]	;sorted[2]
	LABEL0017:

DBI FILE 0 LINE 116
	;for
	PUSH(DINT)	11
	POP(INT)	[local+32]	;i
	LABEL0021:
DBI FILE 0 LINE 117
	;runtime array address
	PUSH&(INT)[local+0]	;&slot[0]
	PUSH(INT)	[local+32]	;i
	PUSH(INT)	1
	SUB(INT)
	ADDRESS(INT) 2 0 11
	PUSHI(INT)
	;runtime array address
	PUSH&(INT)[local+0]	;&slot[0]
	PUSH(INT)	[local+32]	;i
	ADDRESS(INT) 2 0 11
	POPI(INT)
DBI FILE 0 LINE 118
	;runtime array address
	PUSH&(BOOL)[local+24].0	;&busy[0]
	PUSH(INT)	[local+32]	;i
	PUSH(INT)	1
	SUB(INT)
	ADDRESSBIT(INT) 1 0 11
	PUSHI(BOOL)
	;runtime array address
	PUSH&(BOOL)[local+24].0	;&busy[0]
	PUSH(INT)	[local+32]	;i
	ADDRESSBIT(INT) 1 0 11
	POPI(BOOL)
	PUSH(INT)	[local+32]	;i
	PUSH(INT)	-1
	ADD(INT)
	POP(INT)	[local+32]	;i
	PUSH(INT)	[local+32]	;i
	PUSH(DINT)	1
	CMP GE(INT)
	JC LABEL0021
	LABEL0022:

DBI FILE 0 LINE 120
	PUSH(INT)	0
	POP(INT)	[local+0]	;slot[0]
DBI FILE 0 LINE 121
	PUSH(BOOL)	0
	POP(BOOL)	[local+24].0	;busy[0]
DBI FILE 0 LINE 122
	PUSH(UDINT)	[retain+12]	;shifts
	PUSH(UDINT)	1
	ADD(UDINT)
	POP(UDINT)	[retain+12]	;shifts
DBI FILE 0 LINE 123
	PUSH(SINT)	[global+4]	;mode
	TO_INT (SINT)

	POP(INT)	[local+36]	;step
DBI FILE 0 LINE 124
	PUSH(DINT)	0
	POP(DINT)	[local+40]	;total
DBI FILE 0 LINE 125
	;for
	PUSH(INT)	[local+36]	;step
	POP(INT)	[local+32]	;i
	LABEL0023:
	PUSH(INT)	[local+32]	;i
	PUSH(DINT)	3
	CMP GT(INT)
	JC LABEL0024
DBI FILE 0 LINE 126
	PUSH(DINT)	[local+40]	;total
	;runtime array address
	PUSH&(DINT)[retain+0]	;&sorted[0]
	PUSH(INT)	[local+32]	;i
	ADDRESS(INT) 4 1 3
	PUSHI(DINT)
	ADD(DINT)
	POP(DINT)	[local+40]	;total
	PUSH(INT)	[local+32]	;i
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+32]	;i
	JMP LABEL0023
	LABEL0024:

DBI FILE 0 LINE 128
	;for
	PUSH(DINT)	0
	POP(INT)	[local+32]	;i
	LABEL0025:
	PUSH(INT)	[local+36]	;step
	PUSH(INT)	0
	CMP GT(INT)
	JC LABEL0027
	PUSH(INT)	[local+36]	;step
	PUSH(INT)	0
	CMP LT(INT)
	JC LABEL0028
	JMP LABEL0026
	LABEL0028:
	PUSH(INT)	[local+32]	;i
	PUSH(DINT)	11
	CMP LT(INT)
	JC LABEL0026
	JMP LABEL0029
	LABEL0027:
	PUSH(INT)	[local+32]	;i
	PUSH(DINT)	11
	CMP GT(INT)
	JC LABEL0026
	LABEL0029:
DBI FILE 0 LINE 129
	PUSH(SINT)	1
	;runtime array address
	PUSH&(SINT)[local+26]	;&grid[0]
	PUSH(INT)	[local+32]	;i
	PUSH(INT)	2
	MOD(INT)
	ADDRESS(INT) 3 0 1
	PUSH(INT)	[local+32]	;i
	PUSH(INT)	4
	DIV(INT)
	ADDRESS(INT) 1 0 2
	POPI(SINT)
	PUSH(INT)	[local+32]	;i
	PUSH(INT)	[local+36]	;step
	ADD(INT)
	POP(INT)	[local+32]	;i
	JMP LABEL0025
	LABEL0026:

DBI FILE 0 LINE 131
	PUSH(DINT)	[local+40]	;total
	PUSH(DINT)	[retain+8]	;sorted[2]
	JSR FUNCTION_Clip__1
	POP(DINT)	[local+44]	;share
DBI FILE 0 LINE 132
	PUSH(INT)	[2002]	;speed
	;runtime array address
	PUSH&(INT)[global+0]	;&limits[0]
	PUSH(SINT)	[global+4]	;mode
	ADDRESS(SINT) 2 1 2
	PUSHI(INT)
	JSR FUNCTION_Clip
	PUSH(INT)	20
	MAX(INT)

	POP(INT)	[2002]	;speed
DBI FILE 0 LINE 133
	;repeat
	LABEL0030:
DBI FILE 0 LINE 134
	PUSH(INT)	[local+36]	;step
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+36]	;step
DBI FILE 0 LINE 135
	;if
	PUSH(INT)	[local+36]	;step
	PUSH(INT)	8
	CMP GT(INT)
	JNC LABEL0032
	;then
DBI FILE 0 LINE 135
	JMP LABEL0031

	LABEL0032:

	;or
	;runtime array address
	PUSH&(INT)[local+0]	;&slot[0]
	PUSH(INT)	[local+36]	;step
	ADDRESS(INT) 2 0 11
	PUSHI(INT)
	PUSH(INT)	0
	CMP EQ(INT)
	DUP(BOOL)
	JC LABEL0033
	POP(BOOL)
	;runtime array address
	PUSH&(BOOL)[local+24].0	;&busy[0]
	PUSH(INT)	[local+36]	;step
	ADDRESSBIT(INT) 1 0 11
	PUSHI(BOOL)
	PUSH(BOOL)	0
	CMP EQ(BOOL)
	LABEL0033:

	JNC LABEL0030
	LABEL0031:

DBI FILE 0 LINE 137
	PUSH(UINT)	[retain+16]	;starts
	PUSH(UINT)	1
	ADD(UINT)
	POP(UINT)	[retain+16]	;starts

		LABEL0008:

	
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
		;Variable (1000): stopButton (BOOL,VAR_GLOBAL AT IX0.1)
		;Variable (1000): eye (BOOL,VAR_GLOBAL AT IX0.2)
		;Variable (1002): partLength (INT,VAR_GLOBAL AT IW2)
		;Variable (2000): motor (BOOL,VAR_GLOBAL AT QX0.0)
		;Variable (2001): gates (BYTE,VAR_GLOBAL AT QB1)
		;Variable (2002): speed (INT,VAR_GLOBAL AT QW2)
		;Variable (0): limits (INT[],VAR_GLOBAL)
		;Variable (4): mode (SINT,VAR_GLOBAL)
		;Variable (5): alarm (BOOL,VAR_GLOBAL)
	PUSH	(INT)	25
	POP	(INT) [2002] ; speed
	PUSH(INT) 	120
	POP(INT) 	[global+0];limits[0]
	PUSH(INT) 	300
	POP(INT) 	[global+2];limits[1]
	PUSH	(SINT)	1
	POP	(SINT) [global+4] ; mode

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------
		;Variable (0): sorted (DINT[],VAR_GLOBAL)
		;Variable (12): shifts (UDINT,VAR_GLOBAL)

	RTS
