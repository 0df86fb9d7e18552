DBI FILE 0 LINE 16
	PUSH(INT)	[local+16]	;a[2][2]
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 17
	PUSH(INT)	[local+194]	;i
	POP(INT)	[local+24]	;a[4][0]
DBI FILE 0 LINE 18
	;runtime array address
	PUSH&(INT)[local+2]	;&a[0][1]
	PUSH(INT)	[local+194]	;i
	ADDRESS(INT) 6 0 4
	PUSHI(INT)
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 19
	;runtime array address
	PUSH&(INT)[local+18]	;&a[3][0]
	PUSH(INT)	[local+196]	;j
	ADDRESS(INT) 2 1 3
	PUSHI(INT)
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 20
	PUSH(INT)	1
	;runtime array address
	PUSH&(INT)[local+0]	;&a[0][0]
	PUSH(INT)	[local+194]	;i
	ADDRESS(INT) 6 0 4
	PUSH(INT)	[local+196]	;j
	ADDRESS(INT) 2 1 3
	POPI(INT)
DBI FILE 0 LINE 21
	PUSH(INT)	[local+58]	;g[1][6]
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 22
	;runtime array address
	PUSH&(INT)[local+30]	;&g[0][0]
	PUSH(INT)	[local+194]	;i
	ADDRESS(INT) 16 2 3
	PUSH(INT)	[local+196]	;j
	ADDRESS(INT) 2 0 1
	PUSH(DINT)	2
	ADDRESS(DINT) 2 0 3
	PUSHI(INT)
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 23
	PUSH(INT)	[local+76]	;h[1][0][1]
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 24
	;runtime array address
	PUSH&(INT)[local+68]	;&h[0][1][0]
	PUSH(INT)	[local+194]	;i
	ADDRESS(INT) 12 0 2
	PUSH(INT)	[local+196]	;j
	ADDRESS(INT) 2 1 3
	PUSHI(INT)
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 25
	PUSH(INT)	[local+184]	;p[5][3]
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 26
	;runtime array address
	PUSH&(INT)[local+108]	;&p[0][5]
	PUSH(INT)	[local+194]	;i
	ADDRESS(INT) 8 0 1
	PUSH(INT)	[local+196]	;j
	ADDRESS(INT) 2 0 2
	PUSHI(INT)
	POP(INT)	[local+194]	;i
DBI FILE 0 LINE 27
	PUSH&(UDINT)	[local+12]	;a[2]
	PUSH&(UDINT)	[local+6]	;a[1]
	MEMCPY	6

DBI FILE 0 LINE 28
	;runtime array address
	PUSH&(UDINT)[local+0]	;&a[0]
	PUSH(INT)	[local+194]	;i
	ADDRESS(INT) 6 0 4
	PUSHI(UDINT)
	PUSH&(UDINT)	[local+0]	;a[0]
	MEMCPY	6

