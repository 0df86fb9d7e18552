DBI FILE 0 LINE 17
	PUSH(t1)	5
	POP(t1)	[local+0]	;s.m
DBI FILE 0 LINE 18
	PUSH(t1)	6
	POP(t1)	[local+0]	;s.m
DBI FILE 0 LINE 19
	PUSH(t1)	7
	POP(t1)	[local+0]	;s.m
DBI FILE 0 LINE 20
	PUSH(INT)	6
	POP(INT)	[local+4]	;s.n
DBI FILE 0 LINE 21
	PUSH(INT)	5
	POP(INT)	[local+6]	;i
DBI FILE 0 LINE 22
	PUSH(INT)	[local+6]	;i
	POP(t1)	[local+0]	;s.m
DBI FILE 0 LINE 23
	PUSH(INT)	5
	PUSH(INT)	[local+6]	;i
	ADD(INT)
	POP(t1)	[local+0]	;s.m
DBI FILE 0 LINE 24
	PUSH(BOOL)	1
	POP(t2)	[local+2].0	;s.f
