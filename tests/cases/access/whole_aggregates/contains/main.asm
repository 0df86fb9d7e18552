DBI FILE 0 LINE 52
	PUSH&(UDINT)	[global+0]	;g
	PUSH&(UDINT)	[retain+0]	;r
	PUSH&(UDINT)	[local+14]	;s
	JSR FUNCTION_take
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 53
	PUSH&(UDINT)	[local+4]	;l.start
	PUSH&(UDINT)	[local+8]	;l.marks
	PUSH&(UDINT)	[3010]	;d
	JSR FUNCTION_take
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 54
	PUSH&(UDINT)	[local+32]	;t[1].start
	;runtime array address
	PUSH&(UDINT)[local+24]	;&t[0].marks
	PUSH(INT)	[local+0]	;i
	ADDRESS(INT) 12 0 1
	PUSHI(UDINT)
	PUSH&(UDINT)	[global+0]	;g
	JSR FUNCTION_take
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 55
	PUSH&(UDINT)	[3010]	;d
	PUSH&(UDINT)	[global+0]	;g
	MEMCPY	4

DBI FILE 0 LINE 56
	PUSH&(UDINT)	[global+0]	;g
	PUSH&(UDINT)	[local+4]	;l.start
	MEMCPY	4

DBI FILE 0 LINE 57
	PUSH&(UDINT)	[global+8]	;c.place
	PUSH&(UDINT)	[local+14]	;s
	MEMCPY	4

DBI FILE 0 LINE 58
	PUSH&(UDINT)	[local+36]	;t[1].marks
	PUSH&(UDINT)	[retain+0]	;r
	MEMCPY	6

DBI FILE 0 LINE 59
	PUSH(BOOL)	[local+42].0	;b
	POP(BOOL)	[global+4].1	;c.reset
DBI FILE 0 LINE 60
	PUSH(INT)	[global+6]	;c.count
	POP(INT)	[local+0]	;i
DBI FILE 0 LINE 61
	PUSH(BOOL)	[global+4].0	;c.up
	POP(BOOL)	[retain+6].0	;k.up
DBI FILE 0 LINE 62
	PUSH(INT)	[retain+12]	;k.place.y
	POP(INT)	[local+0]	;i
