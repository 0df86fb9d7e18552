		;Variable (0): l1 ((DINT),VAR)
		;Variable (4): a ((UDINT),VAR)
		;Variable (12): l2 ((DINT),VAR)
		;Variable (16): b ((UDINT),VAR)
		;Variable (24): l3 ((DINT),VAR)
		;Variable (28): c ((UDINT),VAR)
		;Variable (32): l4 ((DINT),VAR)
		;Variable (36): d ((UDINT),VAR)
	POP(BOOL)	[local+8].3	;a[11]
	POP(BOOL)	[local+20].0	;b[8]
	POP(BOOL)	[local+28].7	;c[7]
	POP(BOOL)	[local+40].6	;d[14]
