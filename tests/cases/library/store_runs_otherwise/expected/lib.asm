
DBI FILENAME lib.~st9
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; FUNCTION: lib,	 file lib.~st9,	 line 1
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_lib:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 4
;;			;Variable (0): lib ((INT),VAR)
;;			;Variable (2): a ((INT),VAR_INPUT)
;;	
;;		;Read input parameters
;;		POP(INT) [local+2] ; a
;;	
;;		;Local variable initialization
;;	
;;		;Function body
;;	DBI FILE 0 LINE 4
;;		PUSH(INT)	[local+2]	;a
;;		POP(INT)	[local+0]	;lib
;;	
;;		;Return value
;;		PUSH	(INT) [local+0] ; lib
;;		RTS
;;	
;;		DBI POU_END

