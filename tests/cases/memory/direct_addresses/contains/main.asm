	;Global Variable List---------------------------------
		;Variable (1000): bit (BOOL,VAR_GLOBAL AT IX0.3)
		;Variable (1000): short (BOOL,VAR_GLOBAL AT I0.1)
		;Variable (1001): far (BOOL,VAR_GLOBAL AT IX0.9)
		;Variable (2099): highest (BOOL,VAR_GLOBAL AT QX98.15)
		;Variable (3099): edge (BOOL,VAR_GLOBAL AT MX98.8)
		;Variable (3002): wd (INT,VAR_GLOBAL AT MW2)
		;Variable (3096): dw (DINT,VAR_GLOBAL AT MD96)
		;Variable (2099): by (BYTE,VAR_GLOBAL AT QB99)
		;Variable (3008): lo (LREAL,VAR_GLOBAL AT ML8)
		;Variable (3010): arr (INT[],VAR_GLOBAL AT MW10)
		;Variable (3020): noletter (INT[],VAR_GLOBAL AT M20)
		;Variable (1032): other (rec,VAR_GLOBAL AT IX32)
		;Variable (2004): bools (BOOL[],VAR_GLOBAL AT QX4)
		;Variable (3040): st (rec,VAR_GLOBAL AT MB40)
		;Variable (1006): twice1 (WORD,VAR_GLOBAL AT IW6)
		;Variable (1006): twice2 (WORD,VAR_GLOBAL AT IW6)
		;Variable (0): free (INT,VAR_GLOBAL)
		;Variable (1001): flag (BOOL,VAR_GLOBAL AT IX1.0)
	PUSH	(INT)	5
	POP	(INT) [3002] ; wd
	PUSH	(BOOL)	1
	POP	(BOOL) [1001].0 ; flag

	RTS
