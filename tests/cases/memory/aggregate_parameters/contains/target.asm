	LOCALDATA 33
		;Variable (0): lead ((BYTE),VAR_INPUT)
		;Variable (4): r ((UDINT),VAR_INPUT)
		;Variable (12): v ((UDINT),VAR_INPUT)
		;Variable (24): s ((UDINT),VAR_OUTPUT)
		;Variable (28): w ((UDINT),VAR_IN_OUT)
		;Variable (32): last ((BYTE),VAR)

	;Read input parameters
	POP(UDINT)	[local+28]	;w
	POP(UDINT)	[local+24]	;s
	PUSH&(UDINT) [local+12] ; v
	MEMCPY 10
	PUSH&(UDINT) [local+4] ; r
	MEMCPY 8
	POP(BYTE) [local+0] ; lead
