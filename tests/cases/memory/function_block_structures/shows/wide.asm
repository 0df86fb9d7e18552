	LOCALSET 1 ; 64 bytes size
	POP(BYTE)	[local+61]	;last
	PUSH (INT) [local+62] ; __ProgramInit
