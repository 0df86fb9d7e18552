	LOCALDATA 9
		;Variable (0): COUNT ((DINT),VAR)
		;Variable (4): a ((INT),VAR)
		;Variable (6): a ((INT),VAR)
		;Variable (8): b ((BYTE),VAR)
