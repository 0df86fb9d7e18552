	LOCALSET 1 ; 4 bytes size
