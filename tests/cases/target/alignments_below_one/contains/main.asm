	LOCALDATA 22
		;Variable (0): b ((BOOL),VAR)
		;Variable (1): i ((INT),VAR)
		;Variable (3): d ((DINT),VAR)
		;Variable (7): a ((UDINT),VAR)
		;Variable (9): j ((INT),VAR)
		;Variable (11): s ((UDINT),VAR)
		;Variable (14): k ((UDINT),VAR)
		;Variable (20): w ((WORD),VAR)
