	;Local variable initialization
	PUSH(INT) 	10
	POP(INT) 	[local+0];c.start
	PUSH(DINT) 	3
	POP(DINT) 	[local+4];c.value
	PUSH(BOOL) 	1
	POP(BOOL) 	[local+8].0;c.on

	PUSH (INT) 1234 
