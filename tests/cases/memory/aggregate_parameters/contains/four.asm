	LOCALDATA 41
		;Variable (0): lead ((BYTE),VAR_INPUT)
		;Variable (4): r ((UDINT),VAR_INPUT)
		;Variable (12): v ((UDINT),VAR_INPUT)
		;Variable (32): s ((UDINT),VAR_OUTPUT)
		;Variable (36): w ((UDINT),VAR_IN_OUT)
		;Variable (40): last ((BYTE),VAR)

	;Read input parameters
	POP(UDINT)	[local+36]	;w
	POP(UDINT)	[local+32]	;s
	PUSH&(UDINT) [local+12] ; v
	MEMCPY 18
	PUSH&(UDINT) [local+4] ; r
	MEMCPY 8
	POP(BYTE) [local+0] ; lead
