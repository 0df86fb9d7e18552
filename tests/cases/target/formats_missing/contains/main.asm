	LOCALDATA 28
		;Variable (0): s ((SINT),VAR)
		;Variable (4): t ((BYTE),VAR)
		;Variable (5): b ((BOOL),VAR)
		;Variable (8): c ((BOOL),VAR)
		;Variable (12): i ((INT),VAR)
		;Variable (16): l ((LREAL),VAR)
		;Variable (24): d ((DINT),VAR)
