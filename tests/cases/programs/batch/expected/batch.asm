
DBI FILENAME batch.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION_BLOCK: Timer,	 file batch.st,	 line 21
; ----------------------------------------------------------------------
FUNCTION_Timer:


	DBI POU_BEGIN

	LOCALDATA 20
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;run

	DUP(UDINT)
	PUSH(UDINT)	4
	ADD(UDINT)
	POP(UDINT)[local+8]	;preset

	DUP(UDINT)
	PUSH(UDINT)	8	;0x00000008
	ADD(UDINT)
	POP(UDINT)[local+12]	;done

	DUP(UDINT)
	PUSH(UDINT)	12
	ADD(UDINT)
	POP(UDINT)[local+16]	;elapsed

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 30
	;if
	PUSH*(BOOL) [local+4]	;run
	NOT(BOOL)
	JNC LABEL0001
	;then
DBI FILE 0 LINE 31
	PUSH(DINT)	0
	POP*(DINT) [local+16]	;elapsed
	JMP LABEL0002
	LABEL0001:
	PUSH*(DINT) [local+16]	;elapsed
	PUSH*(DINT) [local+8]	;preset
	CMP LT(DINT)
	JNC LABEL0002
DBI FILE 0 LINE 33
	PUSH*(DINT) [local+16]	;elapsed
	PUSH(DINT)	1
	ADD(DINT)
	POP*(DINT) [local+16]	;elapsed
	LABEL0002:
DBI FILE 0 LINE 35
	;and
	PUSH*(BOOL) [local+4]	;run
	DUP(BOOL)
	JNC LABEL0003
	POP(BOOL)
	PUSH*(DINT) [local+16]	;elapsed
	PUSH*(DINT) [local+8]	;preset
	CMP GE(DINT)
	LABEL0003:

	POP*(BOOL) [local+12]	;done


	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: Dose,	 file batch.st,	 line 38
; ----------------------------------------------------------------------
FUNCTION_Dose:


	DBI POU_BEGIN

	LOCALDATA 36
	;Read input parameter
	DUP(UDINT)
	POP(UDINT)[local+0]	;FB_INSTANCE

	DUP(UDINT)
	POP(UDINT)[local+4]	;start

	DUP(UDINT)
	PUSH(UDINT)	4
	ADD(UDINT)
	POP(UDINT)[local+8]	;phase

	DUP(UDINT)
	PUSH(UDINT)	12
	ADD(UDINT)
	PUSHI(UDINT)
	POP(UDINT)[local+12]	;used

	DUP(UDINT)
	PUSH(UDINT)	16	;0x00000010
	ADD(UDINT)
	POP(UDINT)[local+16]	;open

	DUP(UDINT)
	PUSH(UDINT)	16777232	;0x01000010
	ADD(UDINT)
	POP(UDINT)[local+20]	;finished

	DUP(UDINT)
	PUSH(UDINT)	20
	ADD(UDINT)
	POP(UDINT)[local+24]	;settle

	DUP(UDINT)
	PUSH(UDINT)	36
	ADD(UDINT)
	POP(UDINT)[local+28]	;given

	DUP(UDINT)
	PUSH(UDINT)	40
	ADD(UDINT)
	POP(UDINT)[local+32]	;marks

	POP(UDINT)


	;FunctionBlock body
DBI FILE 0 LINE 54
	;if
	;and
	;and
	PUSH*(BOOL) [local+4]	;start
	DUP(BOOL)
	JNC LABEL0006
	POP(BOOL)
	PUSH*(BOOL) [local+16]	;open
	NOT(BOOL)
	LABEL0006:

	DUP(BOOL)
	JNC LABEL0005
	POP(BOOL)
	PUSH*(BOOL) [local+20]	;finished
	NOT(BOOL)
	LABEL0005:

	JNC LABEL0004
	;then
DBI FILE 0 LINE 55
	PUSH(DINT)	0
	POP*(DINT) [local+28]	;given
DBI FILE 0 LINE 56
	PUSH(BOOL)	1
	PUSH(UDINT) [local+32]	;&marks
	PUSH(UDINT)	50331648	;0x03000000
	ADD(UDINT)
	POPI(BOOL)
	LABEL0004:

DBI FILE 0 LINE 58
	;and
	PUSH*(BOOL) [local+4]	;start
	DUP(BOOL)
	JNC LABEL0007
	POP(BOOL)
	PUSH*(DINT) [local+28]	;given
	PUSH(UDINT) [local+8]	;&phase
	PUSHI(DINT)
	CMP LT(DINT)
	LABEL0007:

	POP*(BOOL) [local+16]	;open
DBI FILE 0 LINE 59
	;if
	PUSH*(BOOL) [local+16]	;open
	JNC LABEL0008
	;then
DBI FILE 0 LINE 60
	PUSH*(DINT) [local+28]	;given
	PUSH(DINT)	25
	ADD(DINT)
	POP*(DINT) [local+28]	;given
DBI FILE 0 LINE 61
	PUSH*(DINT) [local+12]	;used
	PUSH(DINT)	25
	ADD(DINT)
	POP*(DINT) [local+12]	;used
	LABEL0008:

DBI FILE 0 LINE 63
	;and
	PUSH*(BOOL) [local+4]	;start
	DUP(BOOL)
	JNC LABEL0009
	POP(BOOL)
	PUSH*(BOOL) [local+16]	;open
	NOT(BOOL)
	LABEL0009:

	PUSH(UDINT)	[local+24]	;&settle
	POPI(BOOL)
	PUSH(UDINT) [local+8]	;&phase
	PUSH(UDINT)	4
	ADD(UDINT)
	PUSHI(INT)
	TO_DINT (INT)

	PUSH(DINT)	2
	MUL(DINT)
	PUSH(UDINT)	[local+24]	;&settle
	PUSH(UDINT)	4
	ADD(UDINT)
	POPI(DINT)
	PUSH(UDINT) [local+24]	;&settle
	JSR FUNCTION_Timer
	PUSH(UDINT)	[local+24]	;&settle
	PUSH(UDINT)	8
	ADD(UDINT)
	PUSHI(BOOL)
	POP*(BOOL) [local+20]	;finished

DBI FILE 0 LINE 64
	;if
	;and
	PUSH(UDINT) [local+24]	;&settle
	PUSH(UDINT)	12
	ADD(UDINT)
	PUSHI(DINT)
	PUSH(DINT)	3
	CMP GT(DINT)
	DUP(BOOL)
	JNC LABEL0011
	POP(BOOL)
	PUSH(UDINT) [local+8]	;&phase
	PUSH(UDINT)	16777222	;0x01000006
	ADD(UDINT)
	PUSHI(BOOL)
	LABEL0011:

	JNC LABEL0010
	;then
DBI FILE 0 LINE 65
	PUSH(UDINT) [local+24]	;&settle
	PUSH(UDINT)	8
	ADD(UDINT)
	PUSHI(BOOL)
	PUSH(UDINT) [local+32]	;&marks
	;runtime array address
	PUSH(UDINT) [local+8]	;&phase
	PUSH(UDINT)	4
	ADD(UDINT)
	PUSHI(INT)
	ADDRESSBIT(INT) 1 0 9
	POPI(BOOL)
	LABEL0010:



	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: TotalOf,	 file batch.st,	 line 74
; ----------------------------------------------------------------------
FUNCTION_TotalOf:


	DBI POU_BEGIN

	LOCALDATA 46
		;Variable (0): TotalOf ((DINT),VAR)
		;Variable (4): r ((UDINT),VAR_INPUT)
		;Variable (40): most ((DINT),VAR_IN_OUT)
		;Variable (44): n ((INT),VAR)

	;Read input parameters
	POP(UDINT)	[local+40]	;most
	PUSH&(UDINT) [local+4] ; r
	MEMCPY 35

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 84
	PUSH(DINT)	0
	POP(DINT)	[local+0]	;TotalOf
DBI FILE 0 LINE 85
	PUSH(DINT)	0
	POP*(DINT)	[local+40]	;most
DBI FILE 0 LINE 86
	;for
	PUSH(DINT)	1
	POP(INT)	[local+44]	;n
	LABEL0012:
	PUSH(INT)	[local+44]	;n
	PUSH(INT)	[local+6]	;r.count
	CMP GT(INT)
	JC LABEL0013
DBI FILE 0 LINE 87
	PUSH(DINT)	[local+0]	;TotalOf
	;runtime array address
	PUSH&(DINT)[local+8]	;&r.phases[0].amount
	PUSH(INT)	[local+44]	;n
	ADDRESS(INT) 8 1 3
	PUSHI(DINT)
	ADD(DINT)
	POP(DINT)	[local+0]	;TotalOf
DBI FILE 0 LINE 88
	PUSH*(DINT)	[local+40]	;most
	;runtime array address
	PUSH&(DINT)[local+8]	;&r.phases[0].amount
	PUSH(INT)	[local+44]	;n
	ADDRESS(INT) 8 1 3
	PUSHI(DINT)
	MAX(DINT)

	POP*(DINT)	[local+40]	;most
	PUSH(INT)	[local+44]	;n
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+44]	;n
	JMP LABEL0012
	LABEL0013:


	;Return value
	PUSH	(DINT) [local+0] ; TotalOf
	RTS

	DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION: Percent,	 file batch.st,	 line 92
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_Percent:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 12
;;			;Variable (0): Percent ((REAL),VAR)
;;			;Variable (4): part ((DINT),VAR_INPUT)
;;			;Variable (8): whole ((DINT),VAR_INPUT)
;;	
;;		;Read input parameters
;;		POP(DINT) [local+8] ; whole
;;		POP(DINT) [local+4] ; part
;;	
;;		;Local variable initialization
;;	
;;		;Function body
;;	DBI FILE 0 LINE 96
;;		;if
;;		PUSH(DINT)	[local+8]	;whole
;;		PUSH(DINT)	0
;;		CMP EQ(DINT)
;;		JNC LABEL0014
;;		;then
;;	DBI FILE 0 LINE 97
;;		JMP LABEL0015
;;		LABEL0014:
;;	
;;	DBI FILE 0 LINE 99
;;		PUSH(DINT)	[local+4]	;part
;;		TO_REAL (DINT)
;;	
;;		PUSH(REAL)	100.000000
;;		MUL(REAL)
;;		PUSH(DINT)	[local+8]	;whole
;;		TO_REAL (DINT)
;;	
;;		DIV(REAL)
;;		POP(REAL)	[local+0]	;Percent
;;	
;;		;Return value
;;		LABEL0015:
;;		PUSH	(REAL) [local+0] ; Percent
;;		RTS
;;	
;;		DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: main,	 file batch.st,	 line 102
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 144 bytes size

	; Initialization test
	PUSH (INT) [local+142] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0016
	;Local variable initialization
	PUSH(INT)	7
	POP(INT) 	[local+0];recipe.number
	PUSH(INT)	3
	POP(INT) 	[local+2];recipe.count
	PUSH(DINT) 	100
	POP(DINT) 	[local+4];recipe.phases[0].amount
	PUSH(INT) 	1
	POP(INT) 	[local+8];recipe.phases[0].valve
	PUSH(DINT) 	100
	POP(DINT) 	[local+12];recipe.phases[1].amount
	PUSH(INT) 	1
	POP(INT) 	[local+16];recipe.phases[1].valve
	PUSH(DINT) 	100
	POP(DINT) 	[local+20];recipe.phases[2].amount
	PUSH(INT) 	1
	POP(INT) 	[local+24];recipe.phases[2].valve
	PUSH(DINT)	900
	POP(DINT) 	[local+28];recipe.limits.amount
	PUSH(BOOL)	1
	POP(BOOL) 	[local+34].0;recipe.limits.heat
	PUSH(INT) 	2
	POP(INT) 	[local+38];spare.count
	PUSH(DINT) 	100
	POP(DINT) 	[local+40];spare.phases[0].amount
	PUSH(INT) 	1
	POP(INT) 	[local+44];spare.phases[0].valve
	PUSH(DINT) 	100
	POP(DINT) 	[local+48];spare.phases[1].amount
	PUSH(INT) 	1
	POP(INT) 	[local+52];spare.phases[1].valve
	PUSH(DINT) 	100
	POP(DINT) 	[local+56];spare.phases[2].amount
	PUSH(INT) 	1
	POP(INT) 	[local+60];spare.phases[2].valve
	PUSH(DINT) 	100
	POP(DINT) 	[local+64];spare.limits.amount
	PUSH(INT) 	1
	POP(INT) 	[local+68];spare.limits.valve
	PUSH(DINT) 	100
	POP(DINT) 	[local+72];current.amount
	PUSH(INT) 	1
	POP(INT) 	[local+76];current.valve
	PUSH(DINT) 	100
	POP(DINT) 	[local+84];pump.phase.amount
	PUSH(INT) 	1
	POP(INT) 	[local+88];pump.phase.valve
	PUSH(DINT) 	5
	POP(DINT) 	[local+104];pump.settle.preset
	PUSH	(INT)	1
	POP	(INT) [local+124] ; index

	PUSH (INT) 1234 
	POP (INT) [local+142] ; __ProgramInit
	LABEL0016:

	;Program body
DBI FILE 0 LINE 113
	PUSH(BOOL)	[local+140].0	;closed
	POP(BOOL)	[global+0].0	;flush.run
	PUSH&(UDINT)	[global+0]	;flush
	JSR FUNCTION_Timer

DBI FILE 0 LINE 114
	;case
	PUSH(SINT)	[local+122]	;state
	CASE (SINT) 0 LABEL0018
	CASE (SINT) 1 LABEL0026
	CASE (SINT) 2 LABEL0026
	CASER (SINT) 10  99 LABEL0027
	POP(SINT)
DBI FILE 0 LINE 144
	JMP LABEL0028
	JMP LABEL0017
	LABEL0018:
DBI FILE 0 LINE 116
	PUSH&(UDINT)	[local+0]	;recipe
	PUSH&(DINT)	[local+136]	;peak
	JSR FUNCTION_TotalOf
	POP(DINT)	[local+132]	;total
DBI FILE 0 LINE 117
	;if
	;and
	PUSH(DINT)	[local+132]	;total
	PUSH(DINT)	[local+28]	;recipe.limits.amount
	CMP LE(DINT)
	DUP(BOOL)
	JNC LABEL0020
	POP(BOOL)
	PUSH(DINT)	[retain+0]	;stock[0].amount
	PUSH(DINT)	[local+132]	;total
	CMP GT(DINT)
	LABEL0020:

	JNC LABEL0019
	;then
DBI FILE 0 LINE 118
	PUSH(SINT)	1
	POP(SINT)	[local+122]	;state
	LABEL0019:

	JMP LABEL0017
	LABEL0026:
DBI FILE 0 LINE 121
	;runtime array address
	PUSH&(DINT)[local+4]	;&recipe.phases[0].amount
	PUSH(INT)	[local+124]	;index
	ADDRESS(INT) 8 1 3
	PUSHI(DINT)
	POP(DINT)	[local+72]	;current.amount
DBI FILE 0 LINE 122
	;runtime array address
	PUSH&(INT)[local+8]	;&recipe.phases[0].valve
	PUSH(INT)	[local+124]	;index
	ADDRESS(INT) 8 1 3
	PUSHI(INT)
	POP(INT)	[local+76]	;current.valve
DBI FILE 0 LINE 123
	;runtime array address
	PUSH&(BOOL)[local+10].1	;&recipe.phases[0].stir
	PUSH(INT)	[local+124]	;index
	ADDRESS(INT) 8 1 3
	PUSHI(BOOL)
	POP(BOOL)	[local+78].1	;current.stir
DBI FILE 0 LINE 124
	PUSH(BOOL)	1
	POP(BOOL)	[local+80].0	;pump.start
	PUSH&(UDINT)	[local+72]	;current
	PUSH&(UDINT)	[local+84]	;pump.phase
	MEMCPY	7
	PUSH&(DINT)	[local+128]	;consumed
	POP(UDINT)	[local+92]	;pump.used
	PUSH&(UDINT)	[local+80]	;pump
	JSR FUNCTION_Dose
	PUSH(BOOL)	[local+96].1	;pump.finished
	POP(BOOL)	[local+140].0	;closed

DBI FILE 0 LINE 125
	;if
	PUSH(BOOL)	[local+140].0	;closed
	JNC LABEL0021
	;then
DBI FILE 0 LINE 126
	PUSH(INT)	[local+124]	;index
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+124]	;index
DBI FILE 0 LINE 127
	;while
	LABEL0022:
	PUSH(INT)	[local+124]	;index
	PUSH(INT)	[local+2]	;recipe.count
	CMP LE(INT)
	JNC LABEL0023
DBI FILE 0 LINE 128
	;if
	;runtime array address
	PUSH&(DINT)[local+4]	;&recipe.phases[0].amount
	PUSH(INT)	[local+124]	;index
	ADDRESS(INT) 8 1 3
	PUSHI(DINT)
	PUSH(DINT)	0
	CMP GT(DINT)
	JNC LABEL0024
	;then
DBI FILE 0 LINE 129
	JMP LABEL0023

	LABEL0024:

DBI FILE 0 LINE 131
	PUSH(INT)	[local+124]	;index
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[local+124]	;index
	JMP LABEL0022
	LABEL0023:

DBI FILE 0 LINE 133
	PUSH(SINT)	2
	POP(SINT)	[local+122]	;state
DBI FILE 0 LINE 134
	;if
	PUSH(INT)	[local+124]	;index
	PUSH(INT)	[local+2]	;recipe.count
	CMP GT(INT)
	JNC LABEL0025
	;then
DBI FILE 0 LINE 134
	PUSH(SINT)	10
	POP(SINT)	[local+122]	;state
	LABEL0025:

	LABEL0021:

	JMP LABEL0017
	LABEL0027:
DBI FILE 0 LINE 137
	PUSH(BOOL)	0
	POP(BOOL)	[local+80].0	;pump.start
	PUSH&(DINT)	[local+128]	;consumed
	POP(UDINT)	[local+92]	;pump.used
	PUSH&(UDINT)	[local+80]	;pump
	JSR FUNCTION_Dose

DBI FILE 0 LINE 138
	PUSH(DINT)	[retain+0]	;stock[0].amount
	PUSH(DINT)	[local+128]	;consumed
	SUB(DINT)
	POP(DINT)	[retain+0]	;stock[0].amount
DBI FILE 0 LINE 139
	PUSH&(UDINT)	[local+28]	;recipe.limits
	PUSH&(UDINT)	[local+72]	;current
	MEMCPY	7

DBI FILE 0 LINE 140
	PUSH&(UDINT)	[local+0]	;recipe
	PUSH&(UDINT)	[local+36]	;spare
	MEMCPY	35

DBI FILE 0 LINE 141
	PUSH(UINT)	[global+16]	;batches
	PUSH(UINT)	1
	ADD(UINT)
	POP(UINT)	[global+16]	;batches
DBI FILE 0 LINE 142
	PUSH(SINT)	0
	POP(SINT)	[local+122]	;state
DBI FILE 0 LINE 142
	PUSH(INT)	1
	POP(INT)	[local+124]	;index
	LABEL0017:

DBI FILE 0 LINE 146
	;or
	PUSH(BOOL)	[local+96].0	;pump.open
	DUP(BOOL)
	JC LABEL0029
	POP(BOOL)
	PUSH(BOOL)	[local+54].0	;spare.phases[1].heat
	LABEL0029:

	POP(BOOL)	[local+78].0	;current.heat

		LABEL0028:

	
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
		;Variable (0): flush (Timer,VAR_GLOBAL)
		;Variable (16): batches (UINT,VAR_GLOBAL)
	PUSH(DINT) 	5
	POP(DINT) 	[global+4];flush.preset
	PUSH	(UINT)	1
	POP	(UINT) [global+16] ; batches

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------
		;Variable (0): stock (tPhase[],VAR_GLOBAL)
	PUSH(DINT)	5000
	POP(DINT) 	[retain+0];stock[0].amount
	PUSH(INT)	2
	POP(INT) 	[retain+4];stock[0].valve
	PUSH(DINT)	250
	POP(DINT) 	[retain+8];stock[1].amount

	RTS
