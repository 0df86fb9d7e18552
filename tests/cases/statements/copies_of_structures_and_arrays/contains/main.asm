	;Program body
DBI FILE 0 LINE 5
	PUSH&(UDINT)	[global+0]	;g
	PUSH&(UDINT)	[local+0]	;s
	MEMCPY	18

DBI FILE 0 LINE 6
	PUSH&(UDINT)	[local+0]	;s
	PUSH&(UDINT)	[global+0]	;g
	MEMCPY	18

DBI FILE 0 LINE 7
	PUSH&(UDINT)	[local+26]	;b
	PUSH&(UDINT)	[local+18]	;a
	MEMCPY	8

DBI FILE 0 LINE 8
	PUSH&(UDINT)	[local+18]	;a
	PUSH&(UDINT)	[local+26]	;b
	MEMCPY	8

DBI FILE 0 LINE 9
	PUSH&(UDINT)	[local+18]	;a
	PUSH&(UDINT)	[local+18]	;a
	MEMCPY	8

DBI FILE 0 LINE 10
	PUSH&(UDINT)	[local+8]	;s.a
	PUSH&(UDINT)	[local+18]	;a
	MEMCPY	8

DBI FILE 0 LINE 11
	PUSH&(UDINT)	[local+26]	;b
	PUSH&(UDINT)	[local+8]	;s.a
	MEMCPY	10

