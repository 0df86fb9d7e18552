	LOCALSET 2 ; 8 bytes size
