DBI FILE 0 LINE 29
	PUSH(BOOL)	[local+0].0	;b[0]
	POP(BOOL)	[local+1].3	;b[11]
DBI FILE 0 LINE 30
	PUSH(BOOL)	[local+8].3	;f.bits[11]
	POP(BOOL)	[local+4].3	;c[11]
DBI FILE 0 LINE 31
	PUSH(BOOL)	[local+17].0	;t[2].bits[8]
	POP(BOOL)	[local+6].0	;f.on
DBI FILE 0 LINE 32
	PUSH(BOOL)	[local+12].0	;t[1].on
	POP(BOOL)	[local+30].1	;u[2].q
DBI FILE 0 LINE 33
	;runtime array address
	PUSH&(BOOL)[local+0].0	;&b[0]
	PUSH(INT)	[local+18]	;i
	ADDRESSBIT(INT) 1 0 19
	PUSHI(BOOL)
	POP(BOOL)	[local+20].0	;x
DBI FILE 0 LINE 34
	;runtime array address
	PUSH&(BOOL)[local+3].0	;&c[0]
	PUSH(INT)	[local+18]	;i
	ADDRESSBIT(INT) 8 1 3
	PUSH(DINT)	2
	ADDRESSBIT(DINT) 1 0 7
	PUSHI(BOOL)
	POP(BOOL)	[local+20].0	;x
DBI FILE 0 LINE 35
	PUSH(BOOL)	[local+20].0	;x
	;runtime array address
	PUSH&(BOOL)[local+7].0	;&f.bits[0]
	PUSH(INT)	[local+18]	;i
	ADDRESSBIT(INT) 1 1 12
	POPI(BOOL)
DBI FILE 0 LINE 36
	;runtime array address
	PUSH&(BOOL)[local+9].0	;&t[0].on
	PUSH(INT)	[local+18]	;i
	ADDRESS(INT) 3 0 2
	PUSHI(BOOL)
	POP(BOOL)	[local+20].0	;x
DBI FILE 0 LINE 37
	PUSH(BOOL)	[local+20].0	;x
	;runtime array address
	PUSH&(BOOL)[local+22].1	;&u[0].q
	PUSH(INT)	[local+18]	;i
	ADDRESS(INT) 4 1 4
	POPI(BOOL)
DBI FILE 0 LINE 38
	;runtime array address
	PUSH&(BOOL)[local+10].0	;&t[0].bits[0]
	PUSH(INT)	[local+18]	;i
	ADDRESSBIT(INT) 3 0 2
	PUSH(INT)	[local+18]	;i
	ADDRESSBIT(INT) 1 1 12
	PUSHI(BOOL)
	POP(BOOL)	[local+20].0	;x
DBI FILE 0 LINE 39
	;runtime array address
	PUSH&(BOOL)[local+16].0	;&t[2].bits[0]
	PUSH(INT)	[local+18]	;i
	ADDRESSBIT(INT) 1 1 12
	PUSHI(BOOL)
	POP(BOOL)	[local+20].0	;x
DBI FILE 0 LINE 40
	PUSH&(BOOL)	[local+1].5	;b[13]
	JSR FUNCTION_touch
	POP(BOOL)	[local+20].0	;x
DBI FILE 0 LINE 41
	PUSH&(BOOL)	[local+22].1	;u[0].q
	JSR FUNCTION_touch
	POP(BOOL)	[local+20].0	;x
