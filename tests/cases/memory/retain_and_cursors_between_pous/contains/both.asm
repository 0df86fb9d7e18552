	LOCALDATA 5
		;Variable (0): rl ((DINT),VAR)
		;Variable (4): rlb ((BOOL),VAR)
		;Variable (0): x ((INT),VAR)
