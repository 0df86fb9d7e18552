	PUSH(SINT)	[local+0]	;s
