	LOCALDATA 10
		;Variable (0): a ((DINT),VAR)
		;Variable (4): b ((BOOL),VAR)
		;Variable (5): c ((DINT),VAR)
		;Variable (9): d ((BOOL),VAR)
