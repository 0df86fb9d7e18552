	LOCALDATA 21
		;Variable (0): lead ((BYTE),VAR_INPUT)
		;Variable (4): r ((UDINT),VAR_INPUT)
		;Variable (8): v ((UDINT),VAR_INPUT)
		;Variable (12): s ((UDINT),VAR_OUTPUT)
		;Variable (16): w ((UDINT),VAR_IN_OUT)
		;Variable (20): last ((BYTE),VAR)

	;Read input parameters
	POP(UDINT)	[local+16]	;w
	POP(UDINT)	[local+12]	;s
	PUSH&(UDINT) [local+8] ; v
	MEMCPY 4
	PUSH&(UDINT) [local+4] ; r
	MEMCPY 4
	POP(BYTE) [local+0] ; lead
