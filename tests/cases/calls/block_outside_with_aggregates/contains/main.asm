DBI FILE 0 LINE 14
	PUSH(UDINT) [local+8]	;&s
	PUSHI(UDINT)
	POP(UDINT)	[global+0]	;g.s
	PUSH&(UDINT)	[global+40]	;gt
	POP(UDINT)	[global+4]	;g.t
	PUSH(UDINT) [local+16]	;&b
	POP(BOOL)	[global+24].0	;g.x
	PUSH(UDINT) [local+8]	;&s

	POP(UDINT)	[global+28]	;g.xs
	PUSH&(UDINT)	[global+40]	;gt
	POP(UDINT)	[global+32]	;g.xt
	PUSH&(UDINT)	[global+0]	;g
	JSR FUNCTION_c
	PUSH(UDINT) [global+12]	; g.os
	POP&(UDINT)	[global+36]	;gs
	PUSH(UDINT) [global+16]	; g.ot
	PUSH(UDINT) [local+12]	;&t
	POPI(UDINT)

DBI FILE 0 LINE 15
	PUSH&(UDINT)	[global+36]	;gs
	PUSH(UDINT)	[local+20]	;&n
	POPI(UDINT)
	PUSH(UDINT) [local+12]	;&t
	PUSHI(UDINT)
	PUSH(UDINT)	[local+20]	;&n
	PUSH(UDINT)	4
	ADD(UDINT)
	POPI(UDINT)
	PUSH&(BOOL)	[global+48].0	;gb
	PUSH(UDINT)	[local+20]	;&n
	PUSH(UDINT)	24
	ADD(UDINT)
	POPI(UDINT)
	PUSH&(UDINT)	[global+36]	;gs
	PUSH(UDINT)	[local+20]	;&n
	PUSH(UDINT)	28
	ADD(UDINT)
	POPI(UDINT)
	PUSH(UDINT) [local+12]	;&t

	PUSH(UDINT)	[local+20]	;&n
	PUSH(UDINT)	32
	ADD(UDINT)
	POPI(UDINT)
	PUSH(UDINT) [local+20]	;&n
	JSR FUNCTION_c
	PUSH(UDINT)	[local+20]	;&n
	PUSH(UDINT)	12
	ADD(UDINT)
	PUSHI(UDINT)
	PUSH(UDINT) [local+8]	;&s
	POPI(UDINT)
	PUSH(UDINT)	[local+20]	;&n
	PUSH(UDINT)	16
	ADD(UDINT)
	PUSHI(UDINT)
	POP&(UDINT)	[global+40]	;gt


