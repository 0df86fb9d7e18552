;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------
		;Variable (0): f (Flag[],VAR_GLOBAL)
		;Variable (1): g (Flag[],VAR_GLOBAL)
		;Variable (2): l (Level[],VAR_GLOBAL)
		;Variable (6): n (Level[],VAR_GLOBAL)
		;Variable (10): s (Level[2dim],VAR_GLOBAL)
		;Variable (18): p (INT[],VAR_GLOBAL)
		;Variable (22): v (Level[],VAR_GLOBAL)
		;Variable (26): w (Level[],VAR_GLOBAL)
		;Variable (30): w2 (Level[],VAR_GLOBAL)
		;Variable (32): v2 (Level[],VAR_GLOBAL)
	PUSH(Flag) 	1
	POP(Flag) 	[global+0].1;f[1]
	PUSH(Flag) 	1
	POP(Flag) 	[global+0].2;f[2]
	PUSH(Level) 	6
	POP(Level) 	[global+2];l[0]
	PUSH(Level) 	5
	POP(Level) 	[global+4];l[1]
	PUSH(Level) 	3
	POP(Level) 	[global+6];n[0]
	PUSH(Level) 	3
	POP(Level) 	[global+8];n[1]
	PUSH(Level) 	3
	POP(Level) 	[global+10];s[0]
	PUSH(Level) 	3
	POP(Level) 	[global+12];s[1]
	PUSH(Level) 	3
	POP(Level) 	[global+14];s[2]
	PUSH(Level) 	3
	POP(Level) 	[global+16];s[3]
	PUSH(Level) 	3
	POP(Level) 	[global+22];v[0]
	PUSH(Level) 	3
	POP(Level) 	[global+24];v[1]
	PUSH(Level) 	8
	POP(Level) 	[global+26];w[0]
	PUSH(Level) 	9
	POP(Level) 	[global+32];v2[0]
	PUSH(Level) 	7
	POP(Level) 	[global+34];v2[1]

	RTS
