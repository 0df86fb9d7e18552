	;Global Variable List---------------------------------
		;Variable (127): i (BYTE,VAR_GLOBAL AT IB63)
		;Variable (65): q (BYTE,VAR_GLOBAL AT QB1)
		;Variable (5): m (BYTE,VAR_GLOBAL AT MB3)

	RTS
