		;Variable (0): p (Part,VAR_GLOBAL)
		;Variable (10): n (Part,VAR_GLOBAL)
		;Variable (20): o (Part,VAR_GLOBAL)
		;Variable (30): r (Named[],VAR_GLOBAL)
		;Variable (50): r2 (Named[],VAR_GLOBAL)
		;Variable (60): x (Named[][][],VAR_GLOBAL)
		;Variable (140): y (Named[],VAR_GLOBAL)
		;Variable (150): v1 (INT,VAR_GLOBAL)
		;Variable (152): v2 (INT,VAR_GLOBAL)
		;Variable (154): v3 (INT,VAR_GLOBAL)
		;Variable (156): v5 (INT,VAR_GLOBAL)
		;Variable (158): v6 (INT,VAR_GLOBAL)
		;Variable (160): w (INT,VAR_GLOBAL)
		;Variable (162): v7 (INT,VAR_GLOBAL)
	PUSH(INT) 	1
	POP(INT) 	[global+0];p.a
	PUSH(Five) 	2
	POP(Five) 	[global+2];p.b
	PUSH(Five) 	6
	POP(Five) 	[global+6];p.m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+8];p.m[1]
	PUSH(INT)	8
	POP(INT) 	[global+10];n.a
	PUSH(Five) 	6
	POP(Five) 	[global+16];n.m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+18];n.m[1]
	PUSH(Five)	3
	POP(Five) 	[global+22];o.b
	PUSH(Five) 	6
	POP(Five) 	[global+26];o.m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+28];o.m[1]
	PUSH(INT)	8
	POP(INT) 	[global+30];r[0].a
	PUSH(Five) 	6
	POP(Five) 	[global+36];r[0].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+38];r[0].m[1]
	PUSH(INT)	8
	POP(INT) 	[global+40];r[1].a
	PUSH(Five) 	6
	POP(Five) 	[global+46];r[1].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+48];r[1].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+50];r2[0].a
	PUSH(Five) 	2
	POP(Five) 	[global+52];r2[0].b
	PUSH(Five) 	6
	POP(Five) 	[global+56];r2[0].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+58];r2[0].m[1]
	PUSH(Five)	9
	POP(Five) 	[global+62];x[0][0][0].b
	PUSH(Five) 	6
	POP(Five) 	[global+66];x[0][0][0].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+68];x[0][0][0].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+70];x[0][0][1].a
	PUSH(Five) 	2
	POP(Five) 	[global+72];x[0][0][1].b
	PUSH(Five) 	6
	POP(Five) 	[global+76];x[0][0][1].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+78];x[0][0][1].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+80];x[0][1][0].a
	PUSH(Five) 	2
	POP(Five) 	[global+82];x[0][1][0].b
	PUSH(Five) 	6
	POP(Five) 	[global+86];x[0][1][0].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+88];x[0][1][0].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+90];x[0][1][1].a
	PUSH(Five) 	2
	POP(Five) 	[global+92];x[0][1][1].b
	PUSH(Five) 	6
	POP(Five) 	[global+96];x[0][1][1].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+98];x[0][1][1].m[1]
	PUSH(Five)	9
	POP(Five) 	[global+102];x[1][0][0].b
	PUSH(Five) 	6
	POP(Five) 	[global+106];x[1][0][0].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+108];x[1][0][0].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+110];x[1][0][1].a
	PUSH(Five) 	2
	POP(Five) 	[global+112];x[1][0][1].b
	PUSH(Five) 	6
	POP(Five) 	[global+116];x[1][0][1].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+118];x[1][0][1].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+120];x[1][1][0].a
	PUSH(Five) 	2
	POP(Five) 	[global+122];x[1][1][0].b
	PUSH(Five) 	6
	POP(Five) 	[global+126];x[1][1][0].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+128];x[1][1][0].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+130];x[1][1][1].a
	PUSH(Five) 	2
	POP(Five) 	[global+132];x[1][1][1].b
	PUSH(Five) 	6
	POP(Five) 	[global+136];x[1][1][1].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+138];x[1][1][1].m[1]
	PUSH(INT) 	1
	POP(INT) 	[global+140];y[0].a
	PUSH(Five) 	2
	POP(Five) 	[global+142];y[0].b
	PUSH(Five) 	6
	POP(Five) 	[global+146];y[0].m[0]
	PUSH(Five) 	7
	POP(Five) 	[global+148];y[0].m[1]
	PUSH	(INT)	8
	POP	(INT) [global+150] ; v1
	PUSH	(INT)	2
	POP	(INT) [global+152] ; v2
	PUSH	(INT)	8
	POP	(INT) [global+154] ; v3
	PUSH	(INT)	7
	POP	(INT) [global+156] ; v5
	PUSH	(INT)	1
	POP	(INT) [global+158] ; v6
	PUSH	(INT)	5
	POP	(INT) [global+160] ; w
	PUSH	(INT)	5
	POP	(INT) [global+162] ; v7

	RTS
