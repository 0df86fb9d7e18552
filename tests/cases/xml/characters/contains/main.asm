	DBI POU_BEGIN

	ιθ
	€
	
	“
	?
	 
	
	ι
	ι
	?.?.
	LOCALSET 2 ; 2 bytes size
