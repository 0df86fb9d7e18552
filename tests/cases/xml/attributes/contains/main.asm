	DBI POU_BEGIN

	it is "quoted"
	LOCALSET 2 ; 2 bytes size
