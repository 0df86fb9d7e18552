	LOCALDATA 41
		;Variable (0): lead ((BYTE),VAR_INPUT)
		;Variable (4): r ((ULINT),VAR_INPUT)
		;Variable (12): v ((ULINT),VAR_INPUT)
		;Variable (24): s ((ULINT),VAR_OUTPUT)
		;Variable (32): w ((ULINT),VAR_IN_OUT)
		;Variable (40): last ((BYTE),VAR)

	;Read input parameters
	POP(ULINT)	[local+32]	;w
	POP(ULINT)	[local+24]	;s
	PUSH&(ULINT) [local+12] ; v
	MEMCPY 10
	PUSH&(ULINT) [local+4] ; r
	MEMCPY 8
	POP(BYTE) [local+0] ; lead
