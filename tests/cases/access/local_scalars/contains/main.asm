DBI FILE 0 LINE 17
	PUSH(BOOL)	[local+0].0	;first
	POP(BOOL)	[local+0].1	;second
DBI FILE 0 LINE 18
	PUSH(BOOL)	[local+0].1	;second
	POP(BOOL)	[local+4].0	;third
DBI FILE 0 LINE 19
	PUSH(INT)	[local+2]	;Count
	POP(INT)	[local+2]	;Count
DBI FILE 0 LINE 20
	PUSH(LREAL)	[local+8]	;level
	POP(LREAL)	[local+8]	;level
DBI FILE 0 LINE 21
	PUSH&(BOOL)	[local+0].1	;second
	PUSH&(INT)	[local+2]	;Count
	PUSH&(LREAL)	[local+8]	;level
	JSR FUNCTION_touch
	POP(INT)	[local+2]	;Count
