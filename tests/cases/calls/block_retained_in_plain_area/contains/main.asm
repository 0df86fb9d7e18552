DBI FILE 0 LINE 17
	PUSH&(INT)	[retain+12]	;r
	POP(UDINT)	[global+8]	;Gr.x
	PUSH(BOOL)	[retain+18].0	;Lr.B1
	POP(BOOL)	[global+2].1	;Gr.b2
	PUSH&(UDINT)	[global+0]	;Gr
	JSR FUNCTION_c
	PUSH(INT)	[global+4]	;Gr.o
	POP(INT)	[retain+12]	;r

DBI FILE 0 LINE 18
	PUSH(INT)	[retain+4]	;Gr.o
	POP(INT)	[local+16]	;Lr.i
	PUSH&(INT)	[local+0]	;n
	POP(UDINT)	[local+24]	;Lr.x
	PUSH&(UDINT)	[local+16]	;Lr
	JSR FUNCTION_c

DBI FILE 0 LINE 19
	PUSH&(UDINT)	[retain+16]	;Lr
	JSR FUNCTION_f
