	LOCALSET 1 ; 36 bytes size
	POP(BYTE)	[local+33]	;last
	PUSH (INT) [local+34] ; __ProgramInit
