	LOCALDATA 14
		;Variable (0): i ((INT),VAR)
		;Variable (2): w ((WORD),VAR)
		;Variable (4): d ((DINT),VAR)
		;Variable (8): b ((BYTE),VAR)
		;Variable (12): s ((SINT),VAR)
		;Variable (13): u ((USINT),VAR)
