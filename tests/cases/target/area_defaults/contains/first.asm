	;Global Variable List---------------------------------
		;Variable (287): i (BYTE,VAR_GLOBAL AT IB31)
		;Variable (63): q (BYTE,VAR_GLOBAL AT QB31)
		;Variable (9999): m (BYTE,VAR_GLOBAL AT MB4999)

	RTS
