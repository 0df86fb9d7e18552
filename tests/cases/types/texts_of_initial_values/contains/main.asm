	;Global Variable List---------------------------------
		;Variable (0): zero (INT,VAR_GLOBAL)
		;Variable (4): minus (DINT,VAR_GLOBAL)
		;Variable (8): big (DINT,VAR_GLOBAL)
		;Variable (12): u0 (UINT,VAR_GLOBAL)
		;Variable (14): u1 (UINT,VAR_GLOBAL)
		;Variable (16): u2 (UDINT,VAR_GLOBAL)
		;Variable (20): wo (DWORD,VAR_GLOBAL)
		;Variable (24): t (BOOL,VAR_GLOBAL)
		;Variable (24): f (BOOL,VAR_GLOBAL)
		;Variable (28): r0 (REAL,VAR_GLOBAL)
		;Variable (32): half (REAL,VAR_GLOBAL)
		;Variable (40): tiny (LREAL,VAR_GLOBAL)
		;Variable (48): neg (REAL,VAR_GLOBAL)
		;Variable (52): none (INT,VAR_GLOBAL)
		;Variable (54): five (INT[],VAR_GLOBAL)
		;Variable (64): part (INT[],VAR_GLOBAL)
		;Variable (76): many (BYTE[],VAR_GLOBAL)
	PUSH	(DINT)	-5
	POP	(DINT) [global+4] ; minus
	PUSH	(DINT)	2147483647
	POP	(DINT) [global+8] ; big
	PUSH	(UINT)	65535
	POP	(UINT) [global+14] ; u1
	PUSH	(UDINT)	-1
	POP	(UDINT) [global+16] ; u2
	PUSH	(DWORD)	-2147483648
	POP	(DWORD) [global+20] ; wo
	PUSH	(BOOL)	1
	POP	(BOOL) [global+24].0 ; t
	PUSH	(REAL)	0.500000
	POP	(REAL) [global+32] ; half
	PUSH	(LREAL)	0.000000
	POP	(LREAL) [global+40] ; tiny
	PUSH	(REAL)	-1.250000
	POP	(REAL) [global+48] ; neg
	PUSH(INT) 	1
	POP(INT) 	[global+54];five[0]
	PUSH(INT) 	2
	POP(INT) 	[global+56];five[1]
	PUSH(INT) 	2
	POP(INT) 	[global+58];five[2]
	PUSH(INT) 	2
	POP(INT) 	[global+60];five[3]
	PUSH(INT) 	4
	POP(INT) 	[global+62];five[4]
	PUSH(INT) 	9
	POP(INT) 	[global+68];part[2]
	PUSH(BYTE) 	1
	POP(BYTE) 	[global+76];many[0]
	PUSH(BYTE) 	2
	POP(BYTE) 	[global+77];many[1]
	PUSH(BYTE) 	3
	POP(BYTE) 	[global+78];many[2]
	PUSH(BYTE) 	4
	POP(BYTE) 	[global+79];many[3]
	PUSH(BYTE) 	5
	POP(BYTE) 	[global+80];many[4]
	PUSH(BYTE) 	6
	POP(BYTE) 	[global+81];many[5]
	PUSH(BYTE) 	7
	POP(BYTE) 	[global+82];many[6]
	PUSH(BYTE) 	8
	POP(BYTE) 	[global+83];many[7]
	PUSH(BYTE) 	9
	POP(BYTE) 	[global+84];many[8]
	PUSH(BYTE) 	10
	POP(BYTE) 	[global+85];many[9]
	PUSH(BYTE) 	11
	POP(BYTE) 	[global+86];many[10]
	PUSH(BYTE) 	12
	POP(BYTE) 	[global+87];many[11]

	RTS
