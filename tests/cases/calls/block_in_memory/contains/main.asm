	;Program body
DBI FILE 0 LINE 10
	PUSH(INT)	[local+0]	;x
	POP(INT)	[local+16]	;fb.a
	PUSH(BOOL)	[local+2].0	;p
	POP(BOOL)	[local+18].0	;fb.b1
	PUSH(BOOL)	1
	POP(BOOL)	[local+18].1	;fb.b2
	PUSH&(UDINT)	[local+4]	;ar
	PUSH&(UDINT)	[local+20]	;fb.arr
	MEMCPY	8
	PUSH&(UDINT)	[local+12]	;st
	PUSH&(UDINT)	[local+28]	;fb.s
	MEMCPY	4
	PUSH&(UDINT)	[local+16]	;fb
	JSR FUNCTION_blk
	PUSH(INT)	[local+32]	;fb.o
	POP(INT)	[local+0]	;x
	PUSH(BOOL)	[local+34].1	;fb.ob2
	POP(BOOL)	[local+2].0	;p
	PUSH&(UDINT)	[local+36]	;fb.oa
	PUSH&(UDINT)	[local+4]	;ar
	MEMCPY	8
	PUSH&(UDINT)	[local+44]	;fb.os
	PUSH&(UDINT)	[local+12]	;st
	MEMCPY	4

DBI FILE 0 LINE 11
	PUSH&(UDINT)	[local+16]	;fb
	JSR FUNCTION_blk

DBI FILE 0 LINE 12
	PUSH(INT)	[local+0]	;x
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[global+0]	;g.a
	PUSH(BOOL)	[local+2].0	;p
	NOT(BOOL)
	POP(BOOL)	[global+2].1	;g.b2
	PUSH&(UDINT)	[global+0]	;g
	JSR FUNCTION_blk
	PUSH(INT)	[global+16]	;g.o
	POP(INT)	[local+12]	;st.x
	PUSH(BOOL)	[global+18].0	;g.ob1
	POP(BOOL)	[local+2].0	;p

DBI FILE 0 LINE 13
	PUSH&(UDINT)	[local+4]	;ar
	PUSH&(UDINT)	[global+4]	;g.arr
	MEMCPY	8
	PUSH(INT)	7
	POP(INT)	[global+0]	;g.a
	PUSH&(UDINT)	[global+0]	;g
	JSR FUNCTION_blk
	PUSH&(UDINT)	[global+20]	;g.oa
	PUSH&(UDINT)	[global+4]	;g.arr
	MEMCPY	8

DBI FILE 0 LINE 14
	;runtime array address
	PUSH&(INT)[local+4]	;&ar[0]
	PUSH(INT)	[local+0]	;x
	ADDRESS(INT) 2 0 3
	PUSHI(INT)
	POP(INT)	[local+16]	;fb.a
	PUSH&(UDINT)	[local+16]	;fb
	JSR FUNCTION_blk
	PUSH(INT)	[local+32]	;fb.o
	POP(INT)	[local+8]	;ar[2]


	
	RTS
