	;FunctionBlock body
DBI FILE 0 LINE 17
	PUSH*(INT) [local+4]	;x
	PUSH(UDINT)	[local+8]	;&c
	POPI(INT)
	PUSH(INT)	2
	PUSH(UDINT)	[local+8]	;&c
	PUSH(UDINT)	2
	ADD(UDINT)
	POPI(INT)
	PUSH(UDINT) [local+8]	;&c
	JSR FUNCTION_cnt
	PUSH(UDINT)	[local+8]	;&c
	PUSH(UDINT)	6
	ADD(UDINT)
	PUSHI(INT)
	POP*(INT) [local+12]	;y

DBI FILE 0 LINE 18
	PUSH*(BOOL) [local+20]	;p
	PUSH(UDINT)	[local+16]	;&b
	POPI(BOOL)
	PUSH(BOOL)	1
	PUSH(UDINT)	[local+16]	;&b
	PUSH(UDINT)	16777216	;0x01000000
	ADD(UDINT)
	POPI(BOOL)
	PUSH(UDINT) [local+12]	;&y
	PUSH(UDINT)	[local+16]	;&b
	PUSH(UDINT)	4
	ADD(UDINT)
	POPI(UDINT)
	PUSH(UDINT) [local+16]	;&b
	JSR FUNCTION_bits
	PUSH(UDINT)	[local+16]	;&b
	PUSH(UDINT)	33554432	;0x02000000
	ADD(UDINT)
	PUSHI(BOOL)
	POP*(BOOL) [local+20]	;p
	PUSH(UDINT)	[local+16]	;&b
	PUSH(UDINT)	50331648	;0x03000000
	ADD(UDINT)
	PUSHI(BOOL)
	POP*(BOOL) [local+20]	;p

DBI FILE 0 LINE 19
	PUSH(UDINT) [local+24]	;&z
	PUSH(UDINT)	[local+16]	;&b
	PUSH(UDINT)	4
	ADD(UDINT)
	POPI(UDINT)
	PUSH(UDINT) [local+16]	;&b
	JSR FUNCTION_bits

DBI FILE 0 LINE 20
	PUSH*(INT) [local+4]	;x
	POP(INT)	[global+0]	;g.a
	PUSH*(INT) [local+12]	;y
	PUSH(INT)	1
	ADD(INT)
	POP(INT)	[global+2]	;g.step
	PUSH*(BOOL) [local+20]	;p
	POP(BOOL)	[global+4].0	;g.b
	PUSH&(UDINT)	[global+0]	;g
	JSR FUNCTION_cnt
	PUSH(INT) [global+6]	; g.o
	POP*(INT) [local+12]	;y

DBI FILE 0 LINE 21
	PUSH(UDINT) [local+12]	;&y
	POP(INT)	[global+12]	;gb.n
	PUSH*(BOOL) [local+20]	;p
	POP(BOOL)	[global+8].1	;gb.b2
	PUSH&(UDINT)	[global+8]	;gb
	JSR FUNCTION_bits
	PUSH(BOOL) [global+8].3	; gb.o2
	POP*(BOOL) [local+20]	;p

DBI FILE 0 LINE 22
	PUSH(UDINT) [local+24]	;&z
	POP(INT)	[global+12]	;gb.n
	PUSH&(UDINT)	[global+8]	;gb
	JSR FUNCTION_bits

DBI FILE 0 LINE 23
	PUSH*(INT) [local+4]	;x
	PUSH(UDINT)	[local+28]	;&k
	PUSH(UDINT)	2
	ADD(UDINT)
	POPI(INT)
	PUSH(UDINT) [local+28]	;&k
	JSR FUNCTION_cnt
	PUSH(UDINT)	[local+28]	;&k
	PUSH(UDINT)	6
	ADD(UDINT)
	PUSHI(INT)
	POP*(INT) [local+24]	;z

DBI FILE 0 LINE 24
	PUSH(UDINT) [local+8]	;&c
	JSR FUNCTION_cnt

