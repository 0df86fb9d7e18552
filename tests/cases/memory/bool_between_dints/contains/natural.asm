	LOCALDATA 13
		;Variable (0): a ((DINT),VAR)
		;Variable (4): b ((BOOL),VAR)
		;Variable (8): c ((DINT),VAR)
		;Variable (12): d ((BOOL),VAR)
