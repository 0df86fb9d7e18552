	LOCALSET 1 ; 1004 bytes size
