	;Read input parameters
	POP(UDINT)	[local+8]	;w
	PUSH&(UDINT) [local+2] ; v
	MEMCPY 5

	;Local variable initialization

	;Function body
DBI FILE 0 LINE 26
	PUSH(INT)	[local+4]	;v.y
	POP(INT)	[local+0]	;take
DBI FILE 0 LINE 27
	PUSH&(UDINT)	[local+2]	;v
	PUSH&(UDINT)	[local+8]	;w
	MEMCPY	5

