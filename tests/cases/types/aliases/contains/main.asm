	;Global Variable List---------------------------------
		;Variable (0): x (INT,VAR_GLOBAL)
		;Variable (2): y (INT,VAR_GLOBAL)
		;Variable (4): b0 (BOOL,VAR_GLOBAL)
		;Variable (4): f0 (BOOL,VAR_GLOBAL)
		;Variable (4): f1 (BOOL,VAR_GLOBAL)
		;Variable (6): s (rec,VAR_GLOBAL)
		;Variable (12): v (myint[],VAR_GLOBAL)
		;Variable (16): w (myint[],VAR_GLOBAL)
		;Variable (24): z (BYTE,VAR_GLOBAL)
	PUSH	(INT)	5
	POP	(INT) [global+0] ; x
	PUSH	(INT)	6
	POP	(INT) [global+2] ; y
	PUSH	(BOOL)	1
	POP	(BOOL) [global+4].2 ; f1
