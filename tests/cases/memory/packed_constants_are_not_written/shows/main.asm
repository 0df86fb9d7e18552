	LOCALSET 1 ; 7 bytes size
	PUSH(BOOL)	[local+6].1	;b
