	LOCALDATA 21
		;Variable (0): s ((UDINT),VAR)
		;Variable (12): t ((UDINT),VAR)
		;Variable (20): e ((BYTE),VAR)
