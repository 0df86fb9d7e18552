	;Global Variable List---------------------------------
		;Variable (0): a (DINT,VAR_GLOBAL)
		;Variable (6): b0 (BOOL,VAR_GLOBAL)
		;Variable (5): c (BYTE,VAR_GLOBAL)
		;Variable (6): b1 (BOOL,VAR_GLOBAL)
		;Variable (8): d (DINT[],VAR_GLOBAL)
