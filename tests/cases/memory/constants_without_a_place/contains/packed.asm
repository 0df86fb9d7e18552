	LOCALDATA 7
		;Variable (4): lc ((INT),VAR)
		;Variable (6): lb ((BOOL),VAR)
		;Variable (0): x ((INT),VAR)

	;Read input parameters

	;Local variable initialization

	;Function body
