	PUSH(INT) 	7
	POP(INT) 	[global+2];sn.z.q
	PUSH(INT) 	5
	POP(INT) 	[global+4];sn.n
	PUSH(INT) 	7
	POP(INT) 	[global+6];t.z.q
	PUSH(INT)	2
	POP(INT) 	[global+10];u.z.q
	PUSH(INT) 	7
	POP(INT) 	[global+14];v.z.q
	PUSH(INT)	3
	POP(INT) 	[global+16];v.n
	PUSH(INT) 	7
	POP(INT) 	[global+18];w.z.q
	PUSH(INT) 	7
	POP(INT) 	[global+22];x.z.q
	PUSH(INT)	5
	POP(INT) 	[global+24];x.n
	PUSH	(INT)	5
	POP	(INT) [global+26] ; y
