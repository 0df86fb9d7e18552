		;Variable (0): g (INT,VAR_GLOBAL)
