DBI FILE 0 LINE 41
	PUSH(DINT)	[local+16]	;x.last
	POP(DINT)	[local+16]	;x.last
DBI FILE 0 LINE 42
	PUSH(MyInt)	[local+4]	;x.one.n
	POP(MyInt)	[local+10]	;x.two.n
DBI FILE 0 LINE 43
	PUSH(MyInt)	[local+4]	;x.one.N
	POP(INT)	[local+20]	;i
DBI FILE 0 LINE 44
	PUSH(MyInt)	[local+4]	;x.one.n
	PUSH(MyInt)	[local+10]	;x.two.n
	ADD(MyInt)
	POP(MyInt)	[local+4]	;x.one.n
DBI FILE 0 LINE 45
	PUSH(INT)	[local+20]	;i
	PUSH(INT)	1
	SUB(INT)
	POP(MyInt)	[local+4]	;x.one.n
DBI FILE 0 LINE 46
	PUSH(BOOL)	[local+22].0	;b
	POP(BOOL)	[local+2].1	;x.one.b
DBI FILE 0 LINE 47
	PUSH(BOOL)	[local+8].0	;x.two.a
	POP(BOOL)	[local+12].0	;x.two.c
DBI FILE 0 LINE 48
	PUSH(BOOL)	[local+22].0	;b
	POP(BOOL)	[local+8].1	;x.TWO.B
DBI FILE 0 LINE 49
	PUSH(BOOL)	[local+24].0	;bits.b8
	POP(BOOL)	[local+23].7	;bits.b7
DBI FILE 0 LINE 50
	PUSH(BOOL)	[global+16].0	;g.two.c
	POP(BOOL)	[global+6].1	;g.one.b
DBI FILE 0 LINE 51
	PUSH(DINT)	[global+20]	;g.last
	POP(DINT)	[retain+16]	;r.last
DBI FILE 0 LINE 52
	PUSH(BOOL)	[3052].0	;y.two.c
	POP(BOOL)	[3042].1	;y.one.b
DBI FILE 0 LINE 53
	PUSH(DINT)	[retain+16]	;r.last
	POP(DINT)	[3056]	;y.last
DBI FILE 0 LINE 54
	PUSH&(BOOL)	[local+2].1	;x.one.b
	PUSH&(DINT)	[local+16]	;x.last
	JSR FUNCTION_touch
	POP(INT)	[local+20]	;i
DBI FILE 0 LINE 55
	PUSH&(BOOL)	[global+6].1	;g.one.b
	PUSH&(DINT)	[3056]	;y.last
	JSR FUNCTION_touch
	POP(INT)	[local+20]	;i
