	LOCALSET 1 ; 7 bytes size
	PUSH (INT) [local+4] ; __ProgramInit
	PUSH(BOOL)	[global+6].0	;b0
	POP(BOOL)	[global+6].1	;b1
	POP(DINT)	[global+44]	;d[9]
	PUSH(BOOL)	[local+6].0	;p
