	DBI POU_BEGIN

	<
	<
	<
	&#x3c;
	>>>
	"""
	&&&
	''
	&#x27;
	a   b
	€€€
	£££
	§§§
	°°°
	²²²
	µµµ
	אאא
	חחח
	טטט
	ייי
	ללל
	עעע
	ששש
	&unknown;
	&#xe8;
	&#65;
	&;
	&lt;
	&a&lt;
	&a;<
	& lt;
	&LT;
	x & y
	LOCALSET 2 ; 2 bytes size
