	PUSH&(UDINT)	[local+0]	;s
	PUSH&(UDINT)	[local+16]	;fb.a
	MEMCPY	6
	PUSH&(UDINT)	[local+16]	;fb
	JSR FUNCTION_blk
	PUSH&(UDINT)	[local+26]	;fb.o
	PUSH&(UDINT)	[local+0]	;s
	MEMCPY	6

DBI FILE 0 LINE 9
	PUSH&(UDINT)	[local+6]	;l
	PUSH&(UDINT)	[local+16]	;fb.a
	MEMCPY	8
	PUSH&(UDINT)	[local+16]	;fb
	JSR FUNCTION_blk
	PUSH&(UDINT)	[local+26]	;fb.o
	PUSH&(UDINT)	[local+6]	;l
	MEMCPY	8
