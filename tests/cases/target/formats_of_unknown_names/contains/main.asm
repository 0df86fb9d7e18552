	LOCALDATA 34
		;Variable (0): s ((SINT),VAR)
		;Variable (4): i ((INT),VAR)
		;Variable (8): s2 ((SINT),VAR)
		;Variable (16): l ((LREAL),VAR)
		;Variable (24): b ((BYTE),VAR)
		;Variable (28): j ((INT),VAR)
		;Variable (32): b2 ((BYTE),VAR)
