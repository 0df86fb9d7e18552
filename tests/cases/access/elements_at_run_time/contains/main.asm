DBI FILE 0 LINE 30
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(INT)	[global+0]	;i
	ADDRESS(INT) 2 1 5
	PUSHI(INT)
	POP(INT)	[local+12]	;x[0]
DBI FILE 0 LINE 31
	PUSH(INT)	5
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(INT)	[global+0]	;i
	ADDRESS(INT) 2 1 5
	POPI(INT)
DBI FILE 0 LINE 32
	;runtime array address
	PUSH&(DINT)[local+24]	;&y[0]
	PUSH(DINT)	2
	ADDRESS(DINT) 16 1 3
	PUSH(DINT)	[global+4]	;j
	ADDRESS(DINT) 4 -1 2
	PUSHI(DINT)
	;runtime array address
	PUSH&(DINT)[local+24]	;&y[0]
	PUSH(INT)	[global+0]	;i
	ADDRESS(INT) 16 1 3
	PUSH(DINT)	[global+4]	;j
	ADDRESS(DINT) 4 -1 2
	POPI(DINT)
DBI FILE 0 LINE 33
	;runtime array address
	PUSH&(LREAL)[local+72]	;&z[0]
	PUSH(INT)	[global+0]	;i
	ADDRESS(INT) 96 0 1
	PUSH(DINT)	0
	ADDRESS(DINT) 32 0 2
	PUSH(DINT)	5
	ADDRESS(DINT) 8 5 8
	PUSHI(LREAL)
	POP(LREAL)	[local+272]	;l
DBI FILE 0 LINE 34
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(INT)	[global+0]	;i
	PUSH(INT)	1
	ADD(INT)
	ADDRESS(INT) 2 1 5
	PUSHI(INT)
	POP(INT)	[local+12]	;x[0]
DBI FILE 0 LINE 35
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(INT)	[global+0]	;i
	ADDRESS(INT) 2 1 5
	PUSHI(INT)
	ADDRESS(INT) 2 1 5
	PUSHI(INT)
	POP(INT)	[local+12]	;x[0]
DBI FILE 0 LINE 36
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(INT)	[local+14]	;x[1]
	ADDRESS(INT) 2 1 5
	PUSHI(INT)
	POP(INT)	[local+12]	;x[0]
DBI FILE 0 LINE 37
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(INT)	[global+0]	;i
	JSR FUNCTION_pick
	ADDRESS(MyInt) 2 1 5
	PUSHI(INT)
	POP(INT)	[local+12]	;x[0]
DBI FILE 0 LINE 38
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(DINT)	[global+4]	;j
	TO_INT (DINT)

	ADDRESS(INT) 2 1 5
	PUSHI(INT)
	POP(INT)	[local+12]	;x[0]
DBI FILE 0 LINE 39
	PUSH(MyInt)	[local+264]	;m[0]
	;runtime array address
	PUSH&(MyInt)[local+264]	;&m[0]
	PUSH(INT)	[global+0]	;i
	ADDRESS(INT) 2 0 2
	POPI(MyInt)
DBI FILE 0 LINE 40
	;runtime array address
	PUSH&(INT)[local+12]	;&x[0]
	PUSH(INT)	[global+0]	;i
	ADDRESS(INT) 2 1 5
	PUSHI(INT)
	JSR FUNCTION_touch
	POP(INT)	[global+0]	;i
