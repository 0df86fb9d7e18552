	LOCALSET 1 ; 40 bytes size
	POP(BYTE)	[local+37]	;last
	PUSH (INT) [local+38] ; __ProgramInit
