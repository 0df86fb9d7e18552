DBI FILE 0 LINE 17
	PUSH(BOOL)	[retain+18].0	;Lr.B1
	POP(BOOL)	[global+2].1	;Gr.b2
