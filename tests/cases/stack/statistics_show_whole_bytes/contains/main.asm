	PUSH(BOOL)	[retain+0].7	;r7
	POP(BOOL)	[global+2].6	;b6
