	DBI POU_BEGIN

	NOP ; begin
	NOP
	LOCALSET 2 ; 2 bytes size
