		;Variable (0): g (INT,VAR_GLOBAL)
		;Variable (4): f (fb,VAR_GLOBAL)
	PUSH	(INT)	2
	POP	(INT) [global+0] ; g
	PUSH(INT) 	5
	POP(INT) 	[global+4];f.i
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+6].0;f.ib
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+6].1;f.ic
	PUSH(INT) 	1
	POP(INT) 	[global+8];f.ip.a
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+10].0;f.ip.b
	PUSH(INT) 	3
	POP(INT) 	[global+12];f.ir[0]
	PUSH(INT) 	4
	POP(INT) 	[global+14];f.ir[1]
	PUSH(INT) 	6
	POP(INT) 	[global+16];f.o
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+18].0;f.ob
	PUSH(INT)	4
	POP(INT) 	[global+22];f.p.a
	PUSH(INT) 	1
	POP(INT) 	[global+26];f.q[0]
	PUSH(INT) 	2
	POP(INT) 	[global+28];f.q[1]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+33].0;f.r[8]
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+34].0;f.r1
	PUSH(BOOL) 	1
	POP(BOOL) 	[global+34].1;f.r2
	PUSH(DINT) 	8
	POP(DINT) 	[global+36];f.t
	PUSH(INT) 	10
	POP(INT) 	[global+40];f.k
	PUSH(INT) 	11
	POP(INT) 	[global+42];f.x

	RTS
