DBI FILE 0 LINE 32
	PUSH(BOOL)	[global+0].0	;gb
	POP(BOOL)	[global+0].1	;gc
DBI FILE 0 LINE 33
	PUSH(INT)	[global+2]	;gi
	POP(INT)	[global+2]	;gi
DBI FILE 0 LINE 34
	PUSH(BOOL)	[global+0].0	;gb
	POP(BOOL)	[retain+0].0	;rb
DBI FILE 0 LINE 35
	PUSH(INT)	[global+2]	;gi
	POP(INT)	[retain+2]	;ri
DBI FILE 0 LINE 36
	PUSH(BOOL)	[3020].7	;lb
	POP(BOOL)	[1002].5	;xb
DBI FILE 0 LINE 37
	PUSH(BOOL)	[1002].5	;xb
	POP(BOOL)	[3020].7	;lb
DBI FILE 0 LINE 38
	PUSH(DINT)	[3008]	;xm
	POP(DINT)	[3008]	;xm
DBI FILE 0 LINE 39
	PUSH(INT)	[2004]	;xi
	POP(INT)	[3012]	;xr
DBI FILE 0 LINE 40
	PUSH(INT)	[3012]	;xr
	POP(INT)	[2004]	;xi
DBI FILE 0 LINE 41
	PUSH(INT)	[retain+2]	;ri
	POP(INT)	[retain+4]	;lr
DBI FILE 0 LINE 42
	PUSH&(BOOL)	[global+0].1	;gc
	PUSH&(INT)	[global+2]	;gi
	JSR FUNCTION_touch
	POP(INT)	[global+2]	;gi
DBI FILE 0 LINE 43
	PUSH&(BOOL)	[retain+0].0	;rb
	PUSH&(INT)	[retain+2]	;ri
	JSR FUNCTION_touch
	POP(INT)	[retain+2]	;ri
DBI FILE 0 LINE 44
	PUSH&(BOOL)	[1002].5	;xb
	PUSH&(INT)	[3012]	;xr
	JSR FUNCTION_touch
	POP(INT)	[2004]	;xi
DBI FILE 0 LINE 45
	PUSH&(BOOL)	[3020].7	;lb
	PUSH&(INT)	[retain+4]	;lr
	JSR FUNCTION_touch
	POP(INT)	[retain+4]	;lr
