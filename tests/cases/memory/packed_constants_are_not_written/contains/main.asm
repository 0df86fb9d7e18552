	;Local variable initialization
	PUSH	(INT)	5
	POP	(INT) [local+0] ; w

	PUSH (INT) 1234 
	POP (INT) [local+2] ; __ProgramInit
