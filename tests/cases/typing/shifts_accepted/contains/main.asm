DBI FILE 0 LINE 15
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	1
	SHL(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 16
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	32767
	SHL(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 17
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	-32768
	SHR(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 18
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	32767
	SHL(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 19
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	32767
	SHR(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 20
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	1
	ROL(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 21
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	-1
	ROR(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 22
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	0
	ROL(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 23
	PUSH(WORD)	[local+8]	;w
	PUSH(INT)	3
	SHL(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 24
	PUSH(DWORD)	[local+0]	;dw
	PUSH(INT)	[local+12]	;i
	SHL(DWORD)
	POP(DWORD)	[local+0]	;dw
DBI FILE 0 LINE 25
	PUSH(DWORD)	[local+0]	;dw
	PUSH(DINT)	[local+4]	;d
	TO_INT(DINT)
	SHR(DWORD)
	POP(DWORD)	[local+0]	;dw
DBI FILE 0 LINE 26
	PUSH(BYTE)	[local+16]	;by
	PUSH(UINT)	[local+14]	;u
	TO_INT(UINT)
	ROL(BYTE)
	POP(BYTE)	[local+16]	;by
DBI FILE 0 LINE 27
	PUSH(WORD)	[local+8]	;w
	PUSH(WORD)	[local+10]	;w2
	TO_INT(WORD)
	ROR(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 28
	PUSH(WORD)	[local+8]	;w
	PUSH(BOOL)	[local+17].0	;b
	TO_INT(BOOL)
	SHL(WORD)
	POP(WORD)	[local+8]	;w
DBI FILE 0 LINE 29
	PUSH(WORD)	[local+8]	;w
	PUSH(REAL)	1.500000
	TO_INT(REAL)
	SHL(WORD)
	POP(WORD)	[local+8]	;w
