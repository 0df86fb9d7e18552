DBI FILE 0 LINE 16
	PUSH&(INT)	[local+0]	;x
	POP(UDINT)	[local+16]	;io.n
	PUSH&(BOOL)	[local+2].0	;p
	POP(UDINT)	[local+20].0	;io.b
	PUSH&(UDINT)	[local+4]	;ar
	POP(UDINT)	[local+24]	;io.t
	PUSH&(UDINT)	[local+12]	;st
	POP(UDINT)	[local+28]	;io.s
	PUSH(INT)	3
	POP(INT)	[local+32]	;io.a
	PUSH&(UDINT)	[local+16]	;io
	JSR FUNCTION_inout

DBI FILE 0 LINE 17
	PUSH&(UDINT)	[local+4]	;ar
	POP(UDINT)	[local+24]	;io.t
	PUSH&(UDINT)	[local+12]	;st
	POP(UDINT)	[local+28]	;io.s
	PUSH&(BOOL)	[global+0].0	;gp
	POP(UDINT)	[local+20].0	;io.b
	PUSH&(INT)	[local+14]	;st.y
	POP(UDINT)	[local+16]	;io.n
	PUSH&(UDINT)	[local+16]	;io
	JSR FUNCTION_inout

DBI FILE 0 LINE 18
	PUSH&(INT)	[local+6]	;ar[1]
	POP(UDINT)	[local+16]	;io.n
