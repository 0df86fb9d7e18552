	POP(INT)	[local+12]	;r[2]
	POP(INT)	[local+48]	;g[2][2]
	POP(INT)	[local+80]	;h[1][1]
	POP(BYTE)	[local+132]	;t[2][1].b
